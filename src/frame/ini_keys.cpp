#include "frame/ini_keys.h"

#include "platform/files/files.h"
#include "platform/files/ini_file.h"
#include "platform/files/os_file.h"
#include "platform/files/user_folders.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

std::string IniIn(const std::string& folder) { return folder + kPathSeparator + "Halvane.ini"; }

std::string IniPath() { return IniIn(ConfigurationFolder()); }

// A plain user may not write in the system's folder on Windows. What could not be kept there is in a
// file of his own; once there is one it has all that changes, or a setting would be in two places.
bool WriteOwn(const std::string& folder, const std::string& Section, const std::string& Key,
              const std::string& Text) {
  try {
    MakeHiddenFolder(folder);
  } catch (const Failure&) {
    return false;
  }
  return WriteIniValue(IniIn(folder), Section, Key, Text);
}

bool Unreadable = false;

}  // namespace

void RequireIni() {
  Unreadable = true;
  (void)ReadIniValue(IniPath(), kIniSection, kExchangeFolderKey);
  Unreadable = false;
}

bool IniIsReadable() { return !Unreadable; }

std::string IniRead(const std::string& Section, const std::string& Key) {
  if (Unreadable) return {};
  const std::string folder = OwnSettingsFolder();
  std::string own;
  if (!folder.empty()) own = ReadIniValue(IniIn(folder), Section, Key);
  return own.empty() ? ReadIniValue(IniPath(), Section, Key) : own;
}

std::string ReadExchangeFolder() {
  std::string folder = IniRead(kIniSection, kExchangeFolderKey);
  if (folder.empty() || folder.ends_with(kPathSeparator)) return folder;
  if (LengthOf(folder) < kIniValueCharacters) folder += kPathSeparator;
  return folder;
}

void IniWrite(const std::string& Section, const std::string& Key, const std::string& Text) {
  if (Unreadable) return;
  const std::string own = OwnSettingsFolder();
  const bool ownFirst = !own.empty() && Exist(IniIn(own));
  if (!ownFirst && WriteIniValue(IniPath(), Section, Key, Text)) return;
  if (!own.empty()) (void)WriteOwn(own, Section, Key, Text);
}

}  // namespace ostrel
