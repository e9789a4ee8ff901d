#pragma once

// Folders that belong to the user before any of them belongs to the program: where the desktop keeps
// his documents and his own settings, and the folder with the client's files that this run works in.

#include <string>

namespace ostrel {

/// The user's documents: on Windows where the system has them; elsewhere XDG_DOCUMENTS_DIR of the
/// desktop's user-dirs.dirs, or Documents in the home folder.
std::string DocumentsFolder();

/// Where settings of the user's own lie when the office's file may not be written, which on Windows is
/// in the system's folder. Empty where the office's settings are the user's own anyway.
std::string OwnSettingsFolder();

/// For tests of what a plain user meets on Windows; the empty text brings the real one back.
void SetOwnSettingsFolder(const std::string& path);

/// Folder of the client's tables, of the store and of the log, without a separator behind it: the one
/// that was given, else the executable's.
std::string ApplicationFolder();

/// The empty text brings the executable's folder back.
void SetApplicationFolder(const std::string& path);

}  // namespace ostrel
