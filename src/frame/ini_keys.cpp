#include "frame/ini_keys.h"

#include "platform/files/files.h"
#include "platform/files/ini_file.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

std::string IniPath() { return ConfigurationFolder() + kPathSeparator + "Halvane.ini"; }

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
  return ReadIniValue(IniPath(), Section, Key);
}

std::string ReadExchangeFolder() {
  std::string folder = IniRead(kIniSection, kExchangeFolderKey);
  if (folder.empty() || folder.ends_with(kPathSeparator)) return folder;
  if (LengthOf(folder) < kIniValueCharacters) folder += kPathSeparator;
  return folder;
}

void IniWrite(const std::string& Section, const std::string& Key, const std::string& Text) {
  if (!Unreadable) (void)WriteIniValue(IniPath(), Section, Key, Text);
}

}  // namespace ostrel
