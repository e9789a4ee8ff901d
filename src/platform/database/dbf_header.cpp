#include "platform/database/dbf_header.h"

#include <algorithm>

#include "platform/database/dbf_code_page.h"
#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

constexpr std::size_t kFixedPart = 32;   // bytes of the header in front of the field descriptors
constexpr std::size_t kDescriptor = 32;  // bytes of one field descriptor
constexpr std::size_t kNameBytes = 11;
constexpr char kEndOfFields = 0x0D;
constexpr char kEndOfFile = 0x1A;
constexpr std::uint8_t kNullable = 0x02;  // among the flags of a Visual FoxPro field

constexpr std::uint64_t kLargestTable = 1 << 30;  // ten times the largest office and more

constexpr std::size_t kBacklink = 263;  // bytes behind the fields of a table in a FoxPro database

constexpr std::string_view kVersions = "\x03\x30\x31\x32\x43\x63\x7B\x83\x8B\x8E\xCB\xE5\xF5\xFB";

/// The file with the words for what is wrong with it.
class Suspect {
 public:
  Suspect(std::string_view file, const std::string& path) : file_(file), path_(path) {}

  [[noreturn]] void Refuse(const std::string& reason) const {
    throw Failure(failure_number::kExternalTableFormat,
                  "External table is not in the expected format: " + path_ + " " + reason + ".");
  }
  std::size_t Size() const { return file_.size(); }
  std::string_view Bytes(std::size_t from, std::size_t count) const {
    return file_.substr(from, count);
  }
  std::uint8_t Byte(std::size_t at) const { return static_cast<std::uint8_t>(file_[at]); }
  std::size_t Word(std::size_t at) const { return Byte(at) | std::size_t{Byte(at + 1)} << 8; }
  std::size_t DoubleWord(std::size_t at) const { return Word(at) | Word(at + 2) << 16; }
  char Letter(std::size_t at) const { return file_[at]; }

 private:
  std::string_view file_;
  const std::string& path_;
};

void CheckVersion(const Suspect& file) {
  const std::uint8_t version = file.Byte(0);
  if (version == 0x02) file.Refuse("is a dBase II table, which is not read");
  if (version == 0x04 || version == 0x8C) file.Refuse("is a dBase 7 table, which is not read");
  if (kVersions.find(file.Letter(0)) == std::string_view::npos) file.Refuse("is no dBase table");
  if (file.Byte(15) == 1) file.Refuse("is encrypted");
}

DbfField ReadDescriptor(const Suspect& file, std::size_t at, const CodePage& page) {
  const std::string_view name = file.Bytes(at, kNameBytes);
  DbfField field;
  field.Name = Trim(page.ToUtf8(name.substr(0, name.find('\0'))));
  if (field.Name.empty()) file.Refuse("has a field without a name");
  const char type = file.Letter(at + 11);
  field.Type = type >= 'a' && type <= 'z' ? static_cast<char>(type - 'a' + 'A') : type;
  field.Length = file.Byte(at + 16);
  field.Decimals = file.Byte(at + 17);
  return field;
}

/// Null flags are one bit a field, in the order of the fields; a text of varying length has a bit
/// of its own before it, which says that the text does not fill its field.
class NullBits {
 public:
  void Assign(DbfField& field, std::uint8_t flags) {
    if (field.Type == 'V' || field.Type == 'Q') field.PartFilledBit = next_++;
    if ((flags & kNullable) != 0) field.NullBit = next_++;
  }

 private:
  int next_ = 0;
};

/// The letter may be all that a damaged byte has changed: what the bytes of the field then seem to
/// say is no longer what was written.
bool IsTypeOfItsLength(const DbfField& field, bool visual) {
  switch (field.Type) {
    case 'C':
    case 'N':
    case 'F':
      return true;
    case 'D':
      return field.Length == 8;
    case 'L':
      return field.Length == 1;
    case 'M':
    case 'G':
    case 'P':
      return field.Length == 10 || (visual && field.Length == 4);
    case 'B':
      return field.Length == (visual ? 8 : 10);
    case 'Y':
    case 'T':
      return visual && field.Length == 8;
    case 'I':
    case 'W':
      return visual && field.Length == 4;
    default:  // texts and bytes of varying length, and the null flags
      return visual && (field.Type == 'V' || field.Type == 'Q' || field.Type == '0');
  }
}

std::size_t SumOfLengths(const std::vector<DbfField>& fields) {
  std::size_t sum = 1;
  for (const DbfField& field : fields) sum += field.Length;
  return sum;
}

/// Some programs write texts of more than 255 bytes by using the place of the decimals as the high
/// byte; others leave something meaningless there. The record's length tells which it is.
void FitToRecordLength(const Suspect& file, DbfHeader& header) {
  if (SumOfLengths(header.Fields) != header.RecordLength) {
    for (DbfField& field : header.Fields) {
      if (field.Type == 'C') field.Length += static_cast<std::size_t>(field.Decimals) << 8;
    }
  }
  const std::size_t sum = SumOfLengths(header.Fields);
  if (sum != header.RecordLength) {
    file.Refuse("says that its records have " + std::to_string(header.RecordLength) +
                " bytes, but its fields take " + std::to_string(sum));
  }
}

void PlaceFields(DbfHeader& header) {
  std::size_t offset = 1;
  for (DbfField& field : header.Fields) {
    field.Offset = offset;
    offset += field.Length;
  }
}

/// Takes the null flags, a field of type 0, out of the fields that a row shows.
void HideNullFlags(DbfHeader& header) {
  const auto flags = std::find_if(header.Fields.begin(), header.Fields.end(),
                                  [](const DbfField& field) { return field.Type == '0'; });
  if (flags == header.Fields.end()) return;
  header.NullFlagsOffset = flags->Offset;
  header.NullFlagsLength = flags->Length;
  header.Fields.erase(flags);
}

/// A header that ends too early or too late puts every field of every record in the wrong place.
void CheckEndOfFields(const Suspect& file, const DbfHeader& header, std::size_t end) {
  const bool marked = end < header.HeaderLength && file.Letter(end) == kEndOfFields;
  if (!marked) file.Refuse("has no mark at the end of its fields");
  const std::string_view rest = file.Bytes(end + 1, header.HeaderLength - end - 1);
  const bool empty = rest.find_first_not_of('\0') == std::string_view::npos;
  if (!empty && !(header.IsVisual() && rest.size() == kBacklink)) {
    file.Refuse("says that its records begin at byte " + std::to_string(header.HeaderLength) +
                ", but something stands before");
  }
}

void ReadFields(const Suspect& file, DbfHeader& header) {
  const CodePage page = CodePageOf(header.Language);
  NullBits bits;
  std::size_t at = kFixedPart;
  for (; at + kDescriptor <= header.HeaderLength && file.Letter(at) != kEndOfFields;
       at += kDescriptor) {
    DbfField field = ReadDescriptor(file, at, page);
    if (!IsTypeOfItsLength(field, header.IsVisual())) {
      file.Refuse("has a field " + field.Name + " of no type that such a table has");
    }
    if (header.IsVisual()) bits.Assign(field, file.Byte(at + 18));
    header.Fields.push_back(std::move(field));
  }
  FitToRecordLength(file, header);
  CheckEndOfFields(file, header, at);
  PlaceFields(header);
  HideNullFlags(header);
  if (header.Fields.empty()) file.Refuse("has no fields");
}

/// The first byte of a record: deleted, or live, for which some writers put a zero in every record.
/// Anything else shows that the record does not begin there, or is damaged.
class RecordMarks {
 public:
  RecordMarks(const Suspect& file, const DbfHeader& header)
      : file_(file),
        live_(file.Size() > header.HeaderLength && file.Letter(header.HeaderLength) == '\0' ? '\0'
                                                                                            : ' ') {
  }
  bool At(std::size_t place) const {
    return file_.Letter(place) == live_ || file_.Letter(place) == '*';
  }

 private:
  const Suspect& file_;
  char live_;
};

std::size_t WholeRecords(const Suspect& file, const DbfHeader& header, const RecordMarks& marks,
                         std::size_t promised) {
  const std::size_t room = (file.Size() - header.HeaderLength) / header.RecordLength;
  for (std::size_t record = 0; record < room; ++record) {
    const std::size_t place = header.HeaderLength + record * header.RecordLength;
    if (marks.At(place)) continue;
    if (record >= promised || file.Letter(place) == kEndOfFile) return record;
    file.Refuse("has a damaged record, number " + std::to_string(record + 1));
  }
  return room;
}

std::size_t CountRecords(const Suspect& file, const DbfHeader& header) {
  const RecordMarks marks(file, header);
  const std::size_t promised = file.DoubleWord(4);
  std::size_t records = WholeRecords(file, header, marks, promised);
  const std::size_t rest = header.HeaderLength + records * header.RecordLength;
  const bool cutShort = file.Size() - rest < header.RecordLength;
  const std::size_t firstField = header.Fields.front().Offset + header.Fields.front().Length;
  if (records + 1 == promised && cutShort && file.Size() - rest >= firstField && marks.At(rest)) {
    ++records;
  }
  if (records < promised) {
    file.Refuse("holds " + std::to_string(records) + " records of the " + std::to_string(promised) +
                " that its header promises");
  }
  return records;
}

}  // namespace

DbfHeader CheckDbfHeader(std::string_view bytes, const std::string& path) {
  const Suspect file(bytes, path);
  if (bytes.empty()) file.Refuse("is empty");
  if (bytes.size() <= kFixedPart) file.Refuse("is no dBase table");
  CheckVersion(file);
  DbfHeader header;
  header.Version = file.Byte(0);
  header.Language = file.Byte(29);
  header.HeaderLength = file.Word(8);
  header.RecordLength = file.Word(10);
  if (header.HeaderLength <= kFixedPart || header.HeaderLength > bytes.size()) {
    file.Refuse("is no dBase table, or is cut off in its header");
  }
  ReadFields(file, header);
  header.RecordCount = CountRecords(file, header);
  return header;
}

bool NamesField(std::string_view head, std::string_view name) {
  constexpr struct {
    std::size_t Fixed, Descriptor, NameBytes;
  } kLayouts[] = {{kFixedPart, kDescriptor, kNameBytes}, {68, 48, 32}};  // and of dBase 7
  const bool isTable =
      !head.empty() && (std::string(kVersions) + "\x04\x8C").find(head[0]) != std::string::npos;
  for (const auto& layout : kLayouts) {
    for (std::size_t at = layout.Fixed; isTable && at + layout.Descriptor <= head.size();
         at += layout.Descriptor) {
      if (head[at] == kEndOfFields) break;
      const std::string_view found = head.substr(at, layout.NameBytes);
      if (SameText(Trim(found.substr(0, found.find('\0'))), name)) return true;
    }
  }
  return false;
}

std::string ReadTableFile(const std::string& path) {
  if (!Exist(path)) {
    throw Failure(failure_number::kNoSuchTable, "Could not find the table " + path + ".");
  }
  try {
    return OsFile::OpenToRead(ExistingPath(path)).ReadAll(kLargestTable);
  } catch (const Failure& reason) {
    throw Failure(failure_number::kExternalDriver,
                  "The table " + path + " could not be read. " + reason.Text);
  }
}

}  // namespace ostrel
