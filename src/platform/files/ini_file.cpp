#include "platform/files/ini_file.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/files/ini_text.h"
#include "platform/files/os_file.h"
#include "platform/files/replace_file.h"
#include "platform/files/text_encoding.h"
#include "platform/values/text.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace ostrel {

namespace {

#ifdef _WIN32

// There the office's product uses the profile functions too, which know where its settings lie.

std::string ReadValue(const std::string& path, std::string_view section, std::string_view key) {
  wchar_t buffer[kIniValueCharacters + 1];
  const DWORD size =
      GetPrivateProfileStringW(ToWide(section).c_str(), ToWide(key).c_str(), L"", buffer,
                               static_cast<DWORD>(std::size(buffer)), ToWide(path).c_str());
  return FromWide({buffer, size});
}

bool WriteValue(const std::string& path, std::string_view section, std::string_view key,
                std::string_view value) {
  return WritePrivateProfileStringW(ToWide(section).c_str(), ToWide(key).c_str(),
                                    ToWide(QuotedIniValue(value)).c_str(),
                                    ToWide(path).c_str()) != 0;
}

#else

constexpr std::uint64_t kLargestFile = 16 << 20;  // the office's product has a few kilobytes in it

std::string ContentOf(const std::string& path) {
  try {
    return OsFile::OpenToRead(path).ReadAll(kLargestFile);
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

// A link whose disk is not in is no file that has never been made.
std::string ReadIniValue(const std::string& path, std::string_view section, std::string_view key) {
  RequirePlainFile(path);
  return LeftOf(ReadValue(path, section, key), kIniValueCharacters);
}

bool WriteIniValue(const std::string& path, std::string_view section, std::string_view key,
                   std::string_view value) noexcept {
  try {
    RequirePlainFile(path);
    return WriteValue(path, section, key, value);
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace ostrel
