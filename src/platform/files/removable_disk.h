#pragma once

// Where the removable disk is that the office and the foreman hand to and fro, and which disk a folder
// is on.

#include <string>
#include <string_view>

namespace ostrel {

/// Folder of the first removable disk that is in, or the empty text.
std::string RemovableDisk();

/// The topmost folder of the disk that a folder is on: "/media/foreman/STICK", "/" for the laptop's
/// own; "a:\" on Windows. Of a folder that is not there, the disk that it would be on.
std::string DiskHolding(const std::string& folder);

#ifdef __linux__
/// The first folder of a list of mounts (as /proc/self/mounts has it) that lies where the desktop
/// puts removable disks, below /media or /run/media; or the empty text.
std::string RemovableMount(std::string_view mounts);

/// The folder of a list of mounts that holds `folder`, a full path without links: the longest of them;
/// "/" where there is none.
std::string MountHolding(std::string_view mounts, std::string_view folder);
#endif

}  // namespace ostrel
