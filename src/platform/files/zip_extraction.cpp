#include "platform/files/zip_extraction.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

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

/// The files in front of which a zip says their names again, by these names. Packers of a zip lay them
/// down one behind the other, so what is packed in one of them can be passed over, should it be a zip
/// as well.
class FilesInZip {
 public:
  FilesInZip(std::string_view zip, const std::vector<ZipMember>& members) : zip_(zip) {
    for (const ZipMember& member : members) {
      const auto known = packed_.try_emplace(member.Bytes, member.Packed).first;
      known->second = std::min(known->second, member.Packed);  // sure to be in either
    }
  }

  /// Calls with each name; one may be called with that is none, but its letters.
  template <typename Visit>
  void ForEachName(Visit visit) const {
    for (std::size_t at = zip_.find(kMark); at < zip_.size(); at = zip_.find(kMark, at)) {
      if (zip_.size() - at < kHead) return;
      const std::size_t length = Word(at + 26);
      const std::string_view name = zip_.substr(at + kHead, length);
      // Longer ones are nobody's here, and to look each up would take its time.
      const bool isShort = length <= kLongestName;
      if (isShort) visit(name);
      at = isShort ? EndOf(at, name) : at + kMark.size();
    }
  }

 private:
  static constexpr std::string_view kMark{"PK\3\4", 4};
  static constexpr std::size_t kHead = 30;  // bytes in front of the name
  static constexpr std::size_t kLongestName = 255;

  std::size_t Word(std::size_t at) const {
    const auto byte = [&](std::size_t place) -> std::size_t {
      return static_cast<unsigned char>(zip_[place]);
    };
    return byte(at) | byte(at + 1) << 8U;
  }

  // Where the file at a mark ends, if the directory has it and something of a zip stands there; else
  // just behind the mark.
  std::size_t EndOf(std::size_t at, std::string_view name) const {
    const auto known = packed_.find(name);
    const std::size_t next = at + kMark.size();
    if (known == packed_.end()) return next;
    const std::uint64_t end = at + kHead + name.size() + Word(at + 28) + known->second;
    const bool fits = known->second <= zip_.size() && end <= zip_.size();
    return fits && zip_.substr(end, 2) == kMark.substr(0, 2) ? end : next;
  }

  std::string_view zip_;
  std::unordered_map<std::string_view, std::uint64_t> packed_;
};

/// Checksums protect what is in the files, nothing protects their names: with one letter damaged an
/// old table would stay among new ones. But every name stands in a zip twice, in its directory and in
/// front of the file.
void CheckDirectory(std::string_view zip, const std::vector<ZipMember>& members,
                    const std::vector<std::string>& baseNames) {
  std::set<std::string> listed;
  for (const ZipMember& member : members) {
    if (IsWantedName(member.Name, baseNames)) listed.insert(LowerCase(member.Name));
  }
  FilesInZip(zip, members).ForEachName([&](std::string_view name) {
    if (IsWantedName(name, baseNames) && listed.count(LowerCase(name)) == 0) {
      Refuse("Its directory is damaged: " + std::string(name) + " is missing there.");
    }
  });
}

std::vector<ZipMember> WantedMembers(std::string_view zip, const ZipArchive& archive,
                                     const std::vector<std::string>& baseNames) {
  std::vector<ZipMember> members = archive.Members();
  CheckDirectory(zip, members, baseNames);
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
  const std::string zip = OsFile::OpenToRead(ExistingPath(order.Zip)).ReadAll(kLargestTotal);
  const ZipArchive archive = ZipArchive::OfBytes(zip);
  const std::vector<ZipMember> members = WantedMembers(zip, archive, order.BaseNames);
  std::vector<std::string> patterns;
  for (const std::string& base : order.BaseNames) patterns.push_back(base + ".*");
  const StagedFiles staged(order.Folder, std::move(patterns));
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
  const bool based = std::any_of(
      baseNames.begin(), baseNames.end(),
      [base = name.substr(0, point)](const std::string& wanted) { return SameText(wanted, base); });
  if (!based || name.back() == '.' || name.back() == ' ') return false;
  return std::none_of(name.begin(), name.end(), [&](char c) {
    return static_cast<unsigned char>(c) < ' ' || kInNoFileName.find(c) != std::string_view::npos;
  });
}

}  // namespace ostrel
