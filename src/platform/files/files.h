#pragma once

// Files and folders, as far as the program asks about them. Paths are UTF-8 with the platform's own
// separator. Names match without regard to case on every system, because the office's disks come
// from systems that do not tell CLNT1234.ZIP from Clnt1234.zip.

#include <string>
#include <string_view>
#include <vector>

#include "platform/values/moment.h"

namespace ostrel {

/// "\" on Windows, "/" elsewhere.
extern const std::string kPathSeparator;

/// What the name of an executable ends in.
#ifdef _WIN32
inline constexpr const char* kExecutableExtension = ".exe";
#else
inline constexpr const char* kExecutableExtension = "";
#endif

/// Whether a plain file of that name exists, in any case of its last component.
bool Exist(const std::string& path);

/// Whether anything at all stands under that name, in any case of its last component: also a folder, a
/// pipe, a device, or a link that leads nowhere because its disk is not in. Where a new file is to be
/// made, nothing may stand.
bool IsTaken(const std::string& path);

/// The path with its last component spelled as the folder has it; the path itself when no such file
/// exists. Among names that differ by case alone the exact one wins, then the first by bytes.
std::string ExistingPath(const std::string& path);

/// Names, without folder and sorted, of the plain files that match a pattern in its last component
/// ("/disk/Clnt*.zip"; * any run, ? one character).
///   throws  Failure 52 when the folder does not exist or cannot be read
std::vector<std::string> ListFiles(const std::string& pattern);

/// Last-modified moment in local time.
///   throws  Failure 53 when the file does not exist
Moment LastModified(const std::string& path);

/// The running executable: its folder, without a separator behind it, and its name without folder
/// and without .exe.
std::string ExecutableFolder();
std::string ExecutableBaseName();

/// Tests run the program's routines in folders of their own; empty texts bring the real ones back.
void SetExecutable(const std::string& folder, const std::string& baseName);

/// The user's configuration folder (~/.config, or where the desktop's standard puts it).
std::string ConfigurationFolder();

}  // namespace ostrel
