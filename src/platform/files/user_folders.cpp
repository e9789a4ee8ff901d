#include "platform/files/user_folders.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/files/files.h"
#include "platform/files/os_file.h"

#ifdef _WIN32
#include <shlobj.h>
#endif

namespace ostrel {

namespace {

namespace fs = std::filesystem;

std::string& FolderGiven() {
  static std::string folder;
  return folder;
}

std::string& OwnSettingsGiven() {
  static std::string folder;
  return folder;
}

#ifdef _WIN32

fs::path FolderOfSystem(int which) {
  wchar_t folder[MAX_PATH] = {};
  SHGetFolderPathW(nullptr, which, nullptr, SHGFP_TYPE_CURRENT, folder);
  return folder;
}

fs::path Documents() { return FolderOfSystem(CSIDL_PERSONAL); }
fs::path OwnSettings() { return FolderOfSystem(CSIDL_APPDATA) / L"Ostrel Payroll"; }

#else

fs::path OwnSettings() { return {}; }

std::string Home() {
  const char* home = std::getenv("HOME");
  return home != nullptr ? home : "";
}

// A line of user-dirs.dirs is XDG_DOCUMENTS_DIR="$HOME/..." or an absolute path in the quotes, with
// a backslash before a character that means something to a shell.
std::string ConfiguredDocuments() {
  constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=\"";
  constexpr std::string_view kHome = "$HOME";
  std::ifstream lines(PathFromUtf8(ConfigurationFolder() + "/user-dirs.dirs"));
  std::string found;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(kKey)) continue;
    found.clear();
    for (std::size_t at = kKey.size(); at < line.size() && line[at] != '"'; ++at) {
      if (line[at] == '\\' && at + 1 < line.size()) ++at;
      found += line[at];
    }
    if (found.starts_with(kHome)) found.replace(0, kHome.size(), Home());
  }
  return found;
}

fs::path Documents() {
  const std::string configured = ConfiguredDocuments();
  return fs::path(configured).is_absolute() ? configured : Home() + "/Documents";
}

#endif

}  // namespace

std::string DocumentsFolder() { return Utf8FromPath(Documents()); }

std::string OwnSettingsFolder() {
  return OwnSettingsGiven().empty() ? Utf8FromPath(OwnSettings()) : OwnSettingsGiven();
}

void SetOwnSettingsFolder(const std::string& path) { OwnSettingsGiven() = path; }

std::string ApplicationFolder() {
  return FolderGiven().empty() ? ExecutableFolder() : FolderGiven();
}

void SetApplicationFolder(const std::string& path) { FolderGiven() = path; }

}  // namespace ostrel
