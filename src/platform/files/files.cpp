#include "platform/files/files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/files/os_file.h"
#include "platform/values/clock.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <pwd.h>
#include <unistd.h>
#endif

namespace ostrel {

namespace {

namespace fs = std::filesystem;

#ifdef _WIN32

fs::path ExecutablePath() {
  std::wstring path(32768, L'\0');  // the longest that the system knows
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

// Where the profile functions look for a file without a folder.
fs::path SettingsFolder() {
  wchar_t folder[MAX_PATH];
  return std::wstring(folder, GetWindowsDirectoryW(folder, MAX_PATH));
}

#elif defined(__linux__)

fs::path ExecutablePath() {
  std::error_code unknown;
  return fs::read_symlink("/proc/self/exe", unknown);
}

// A relative XDG_CONFIG_HOME counts as none.
fs::path SettingsFolder() {
  const char* configured = std::getenv("XDG_CONFIG_HOME");
  if (configured != nullptr && fs::path(configured).is_absolute()) return configured;
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') {
    const passwd* user = getpwuid(getuid());
    home = user != nullptr ? user->pw_dir : "/";
  }
  return fs::path(home) / ".config";
}

#else
#error "Say here how this system names the running executable and the user's settings folder."
#endif

bool IsPlainFile(const fs::path& path) {
  std::error_code unreachable;
  return fs::is_regular_file(path, unreachable);
}

fs::path FolderOf(const fs::path& path) {
  return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

// Visits the entries of a folder whose names satisfy `wanted`.
//   returns  what stopped it before the end, a folder that is not there for one
template <typename Wanted, typename Visit>
std::error_code VisitEntries(const fs::path& folder, Wanted wanted, Visit visit) {
  std::error_code stopped;
  fs::directory_iterator entry(folder, stopped);
  while (!stopped && entry != fs::directory_iterator()) {
    std::string name = Utf8FromPath(entry->path().filename());
    if (wanted(name)) visit(*entry, std::move(name));
    entry.increment(stopped);
  }
  return stopped;
}

// The same for plain files, and links to them.
template <typename Wanted, typename Visit>
std::error_code VisitFiles(const fs::path& folder, Wanted wanted, Visit visit) {
  return VisitEntries(folder, wanted, [&](const fs::directory_entry& entry, std::string name) {
    std::error_code unreachable;
    if (entry.is_regular_file(unreachable)) visit(std::move(name));
  });
}

std::size_t SizeOfCharacter(std::string_view text) {
  std::size_t size = 1;
  while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) ++size;
  return size;
}

// Both in lower case. After a mismatch the last * takes one character more and the rest is tried
// again; earlier ones need not be touched, which keeps the steps within name times pattern.
bool Matches(std::string_view name, std::string_view pattern) {
  std::size_t inName = 0;
  std::size_t inPattern = 0;
  std::size_t star = std::string_view::npos;
  std::size_t taken = 0;
  while (inName < name.size()) {
    const char wanted = inPattern < pattern.size() ? pattern[inPattern] : '\0';
    if (wanted == '*') {
      star = inPattern++;
      taken = inName;
    } else if (wanted == name[inName] || wanted == '?') {
      inName += wanted == '?' ? SizeOfCharacter(name.substr(inName)) : 1;
      ++inPattern;
    } else if (star != std::string_view::npos) {
      inPattern = star + 1;
      inName = ++taken;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

struct Executable {
  std::string Folder;
  std::string BaseName;
};

Executable RealExecutable() {
  const fs::path path = ExecutablePath();
  const bool suffixed = SameText(Utf8FromPath(path.extension()), ".exe");
  return {Utf8FromPath(path.parent_path()), Utf8FromPath(suffixed ? path.stem() : path.filename())};
}

Executable& ExecutableInUse() {
  static Executable executable = RealExecutable();
  return executable;
}

}  // namespace

const std::string kPathSeparator(1, static_cast<char>(fs::path::preferred_separator));

bool Exist(const std::string& path) { return IsPlainFile(PathFromUtf8(ExistingPath(path))); }

bool IsTaken(const std::string& path) {
  const fs::path asked = PathFromUtf8(path);
  std::error_code unreachable;
  if (fs::symlink_status(asked, unreachable).type() != fs::file_type::not_found) return true;
  const std::string name = Utf8FromPath(asked.filename());
  bool taken = false;
  VisitEntries(
      FolderOf(asked), [&](const std::string& other) { return SameText(other, name); },
      [&](const fs::directory_entry&, const std::string&) { taken = true; });
  return taken;
}

std::string ExistingPath(const std::string& path) {
  const fs::path asked = PathFromUtf8(path);
  if (IsPlainFile(asked)) return path;
  const std::string name = Utf8FromPath(asked.filename());
  std::string found;
  VisitFiles(
      FolderOf(asked), [&](const std::string& other) { return SameText(other, name); },
      [&](std::string other) {
        if (found.empty() || other < found) found = std::move(other);
      });
  if (found.empty()) return path;
  return path.substr(0, path.size() - name.size()) + found;
}

std::vector<std::string> ListFiles(const std::string& pattern) {
  const fs::path asked = PathFromUtf8(pattern);
  const fs::path folder = FolderOf(asked);
  const std::string namePattern = LowerCase(Utf8FromPath(asked.filename()));
  std::vector<std::string> names;
  const std::error_code stopped = VisitFiles(
      folder, [&](const std::string& name) { return Matches(LowerCase(name), namePattern); },
      [&](std::string name) { names.push_back(std::move(name)); });
  if (stopped) throw FileFailure(failure_number::kBadFileName, Utf8FromPath(folder));
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return std::pair(LowerCase(a), a) < std::pair(LowerCase(b), b);
  });
  return names;
}

Moment LastModified(const std::string& path) {
  const std::optional<std::time_t> changed = LastChange(ExistingPath(path));
  if (!changed) throw FileFailure(failure_number::kFileNotFound, path);
  return LocalMoment(*changed);
}

std::string ExecutableFolder() { return ExecutableInUse().Folder; }
std::string ExecutableBaseName() { return ExecutableInUse().BaseName; }

void SetExecutable(const std::string& folder, const std::string& baseName) {
  ExecutableInUse() = folder.empty() ? RealExecutable() : Executable{folder, baseName};
}

std::string ConfigurationFolder() { return Utf8FromPath(SettingsFolder()); }

}  // namespace ostrel
