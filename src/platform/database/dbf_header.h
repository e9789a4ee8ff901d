#pragma once

// The head of a dBase file, checked against the file itself before anything in it is believed. The
// reader (dbf_file.h) and the writer (dbf_write.h) both start here.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

struct DbfField {
  std::string Name;        ///< UTF-8
  char Type = 'C';         ///< the letter of the file, in upper case
  std::size_t Offset = 0;  ///< bytes from the start of the record, its deletion flag being byte 0
  std::size_t Length = 0;  ///< bytes
  int Decimals = 0;
  int NullBit = -1;        ///< bit of the null flags that makes the field Null, -1 for none
  int PartFilledBit = -1;  ///< bit that says: the last byte of the field counts the ones in use
};

struct DbfHeader {
  std::uint8_t Version = 0;
  std::uint8_t Language = 0;        ///< see dbf_code_page.h
  std::size_t HeaderLength = 0;     ///< bytes in front of the first record
  std::size_t RecordLength = 0;     ///< bytes, with the deletion flag
  std::size_t RecordCount = 0;      ///< records that the file really holds, deleted ones included
  std::vector<DbfField> Fields;     ///< without the hidden null flags
  std::size_t NullFlagsOffset = 0;  ///< 0 when the table has none
  std::size_t NullFlagsLength = 0;

  bool IsVisual() const { return Version >= 0x30 && Version <= 0x32; }
};

/// Reads and checks the head of a whole dBase file. `path` only names the file in a failure.
///
/// How many records there are is a question that header and file may answer differently:
///   - fewer than the header promises: refused, since somebody is missing from the payroll;
///   - a last record cut short, but not inside its first field, counts; what is cut is empty;
///   - more than the header promises: all of them count. They are rows that were appended by a
///     program which died before it wrote the new count; the other reading, remains of an older
///     table, would show a person too many, which is seen, instead of losing one, which is not.
///
///   throws  Failure 3274, naming the file and the reason, when it is no dBase table, one of a kind
///           that is not read (dBase II, dBase 7, encrypted), or damaged
DbfHeader CheckDbfHeader(std::string_view file, const std::string& path);

/// Whether the head of a file is a dBase table's and has a field of that name, the rest being as
/// damaged, or of a kind as foreign, as it may.
///   head  the first kLongestHead bytes of a file, or all
bool NamesField(std::string_view head, std::string_view name);
inline constexpr std::size_t kLongestHead = 65'535;

/// All bytes of a file.
///   throws  Failure 3078 when there is no such file, 3275 when it cannot be read
std::string ReadTableFile(const std::string& path);

}  // namespace ostrel
