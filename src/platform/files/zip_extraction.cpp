#include "platform/files/zip_extraction.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <set>
#include <string_view>

#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/files/staged_files.h"
#include "platform/files/zip_archive.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

// 20,000 employees of 1,000 bytes are 20 MB; a table or its memos ten times that size are no crew's.
// What a zip claims beyond that would fill the laptop's memory or its disk.
constexpr std::uint64_t kMegabyte = 1 << 20;
constexpr std::uint64_t kLargestMember = 256 * kMegabyte;
constexpr std::uint64_t kLargestTotal = 1024 * kMegabyte;
// Five tables, each with its memos and a few indexes.
constexpr std::size_t kMostMembers = 100;

[[noreturn]] void Refuse(const std::string& reason) {
  throw Failure(failure_number::kDeviceIo, reason);
}

void CheckLimits(const std::vector<ZipMember>& members) {
  if (members.size() > kMostMembers) Refuse("It holds more files than any client has tables.");
  std::uint64_t total = 0;
  for (const ZipMember& member : members) {
    if (member.Size > kLargestMember) Refuse(member.Name + " is too large to be a payroll table.");
    total += member.Size;
  }
  if (total > kLargestTotal) Refuse("Its files are too large to be payroll tables.");
}

void CheckUnique(const std::vector<ZipMember>& members) {
  std::set<std::string> names;
  for (const ZipMember& member : members) {
    if (!names.insert(LowerCase(member.Name)).second) Refuse("It holds " + member.Name + " twice.");
  }
}

/// Checksums protect what is in the files, nothing protects their names: with one letter damaged an
/// old table would stay among new ones. But every name stands in a zip twice, in its directory and in
/// front of the file.
void CheckDirectory(std::string_view zip, const std::vector<ZipMember>& members,
                    const std::vector<std::string>& baseNames) {
  constexpr std::string_view kMark("PK\3\4", 4);
  constexpr std::size_t kNameLength = 26, kName = 30;  // places behind the mark
  for (std::size_t at = zip.find(kMark); at < zip.size(); at = zip.find(kMark, at + 1)) {
    if (zip.size() - at < kName) return;
    const auto length = static_cast<unsigned char>(zip[at + kNameLength]);  // wanted ones are short
    const std::string_view name = zip.substr(at + kName, length);
    const bool listed = std::any_of(members.begin(), members.end(), [name](const auto& member) {
      return SameText(member.Name, name);
    });
    if (!listed && IsWantedName(name, baseNames)) {
      Refuse("Its directory is damaged: " + std::string(name) + " is missing there.");
    }
  }
}

std::vector<ZipMember> WantedMembers(const std::string& path, const ZipArchive& archive,
                                     const std::vector<std::string>& baseNames) {
  std::vector<ZipMember> members = archive.Members();
  std::error_code unreadable;  // the reading below says why
  const std::uintmax_t size = std::filesystem::file_size(PathFromUtf8(path), unreadable);
  if (!unreadable && size > kLargestTotal) Refuse("It is too large for payroll tables.");
  CheckDirectory(OsFile::OpenToRead(path).ReadAll(), members, baseNames);
  std::erase_if(members,
                [&](const ZipMember& member) { return !IsWantedName(member.Name, baseNames); });
  for (const ZipMember& member : members) {
    if (!member.IsPlainFile) Refuse(member.Name + " is no plain file.");
  }
  if (members.empty()) Refuse("It holds no tables of this client, or only in folders.");
  CheckLimits(members);
  CheckUnique(members);
  return members;
}

std::string ReadMember(const ZipArchive& archive, const ZipMember& member) {
  try {
    return archive.Read(member);
  } catch (const Failure& failure) {
    Refuse(member.Name + ": " + failure.Text);
  }
}

void Extract(const ZipExtraction& order) {
  const std::string path = ExistingPath(order.Zip);
  const ZipArchive archive = ZipArchive::Open(path);
  const std::vector<ZipMember> members = WantedMembers(path, archive, order.BaseNames);
  const StagedFiles staged(order.Folder);
  for (const ZipMember& member : members) {
    std::string content = ReadMember(archive, member);
    order.Prepare(member.Name, content);
    staged.Add(member.Name, content);
  }
  staged.Install();
}

}  // namespace

std::string ExtractZip(const ZipExtraction& order) {
  try {
    Extract(order);
  } catch (const Failure& failure) {
    return order.Zip + " could not be unpacked.\r" + failure.Text;
  }
  return {};
}

bool IsWantedName(std::string_view name, const std::vector<std::string>& baseNames) {
  constexpr std::string_view kInNoFileName = "\"*/:<>?\\|\x7F";
  const std::size_t point = name.find('.');
  if (point == std::string_view::npos || name.size() == point + 1) return false;
  if (name.back() == '.' || name.back() == ' ') return false;
  const bool writable = std::none_of(name.begin(), name.end(), [&](char c) {
    return static_cast<unsigned char>(c) < ' ' || kInNoFileName.find(c) != std::string_view::npos;
  });
  return writable && std::any_of(baseNames.begin(), baseNames.end(), [&](const std::string& base) {
           return SameText(base, name.substr(0, point));
         });
}

}  // namespace ostrel
