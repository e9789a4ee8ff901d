#pragma once

// Where the removable disk is that the office and the foreman hand to and fro.

#include <string>
#include <string_view>

namespace ostrel {

/// Folder of the first removable disk that is in, or the empty text.
std::string RemovableDisk();

#ifdef __linux__
/// The first folder of a list of mounts (as /proc/self/mounts has it) that lies where the desktop
/// puts removable disks, below /media or /run/media; or the empty text.
std::string RemovableMount(std::string_view mounts);
#endif

}  // namespace ostrel
