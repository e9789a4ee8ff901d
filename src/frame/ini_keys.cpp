#include "frame/ini_keys.h"

#include "platform/files/files.h"
#include "platform/files/ini_file.h"

namespace ostrel {

namespace {

std::string IniPath() { return ConfigurationFolder() + kPathSeparator + "Halvane.ini"; }

}  // namespace

std::string IniRead(const std::string& Section, const std::string& Key) {
  return ReadIniValue(IniPath(), Section, Key);
}

void IniWrite(const std::string& Section, const std::string& Key, const std::string& Text) {
  (void)WriteIniValue(IniPath(), Section, Key, Text);
}

}  // namespace ostrel
