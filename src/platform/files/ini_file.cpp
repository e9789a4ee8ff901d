#include "platform/files/ini_file.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/files/ini_text.h"
#include "platform/files/os_file.h"
#include "platform/files/replace_file.h"
#include "platform/values/text.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace ostrel {

namespace {

#ifdef _WIN32

// There the office's product uses the profile functions too, which know where its settings lie.
std::wstring Wide(std::string_view text) { return PathFromUtf8(text).wstring(); }

std::string ReadValue(const std::string& path, std::string_view section, std::string_view key) {
  wchar_t buffer[kIniValueCharacters + 1];
  const DWORD size =
      GetPrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), L"", buffer,
                               static_cast<DWORD>(std::size(buffer)), Wide(path).c_str());
  return Utf8FromPath(std::filesystem::path(std::wstring(buffer, size)));
}

bool WriteValue(const std::string& path, std::string_view section, std::string_view key,
                std::string_view value) {
  return WritePrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(),
                                    Wide(QuotedIniValue(value)).c_str(), Wide(path).c_str()) != 0;
}

#else

std::string ContentOf(const std::string& path) {
  try {
    return OsFile::OpenToRead(path).ReadAll();
  } catch (const Failure& failure) {
    if (failure.Number == failure_number::kFileNotFound) return {};
    throw;
  }
}

std::string ReadValue(const std::string& path, std::string_view section, std::string_view key) {
  return IniValueIn(ContentOf(path), section, key);
}

// A user without any settings yet has no folder for them; it is nobody else's business.
void MakeFolderOf(const std::string& path) {
  namespace fs = std::filesystem;
  const fs::path folder = PathFromUtf8(path).parent_path();
  std::error_code shownByTheFile;
  if (fs::create_directory(folder, shownByTheFile)) {
    fs::permissions(folder, fs::perms::owner_all, shownByTheFile);
  }
}

bool WriteValue(const std::string& path, std::string_view section, std::string_view key,
                std::string_view value) {
  const std::string before = ContentOf(path);
  const std::string after = WithIniValue(before, section, key, value);
  if (after == before) return true;
  MakeFolderOf(path);
  ReplaceFile(path, after);
  return true;
}

#endif

}  // namespace

std::string ReadIniValue(const std::string& path, std::string_view section, std::string_view key) {
  return LeftOf(ReadValue(path, section, key), kIniValueCharacters);
}

bool WriteIniValue(const std::string& path, std::string_view section, std::string_view key,
                   std::string_view value) noexcept {
  try {
    return WriteValue(path, section, key, value);
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace ostrel
