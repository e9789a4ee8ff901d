#include "platform/database/dbf_file.h"

#include <shapefil.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/database/dbf_values.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

/// A file in memory as the dBase library reads it. Memory, because the library opens no other
/// extension than .dbf and .DBF by itself and trusts whatever count the header has: it is given the
/// bytes that were checked, with the count that was found.
struct MemoryFile {
  std::string_view Bytes;
  std::size_t At = 0;
};

// The opening hook is given a name and nothing else, so this is how it finds the bytes.
thread_local MemoryFile* opening = nullptr;

MemoryFile& FileOf(SAFile handle) { return *reinterpret_cast<MemoryFile*>(handle); }

SAHooks MemoryHooks() {
  // The trailing packs take in the context arguments that later versions of the library pass.
  SAHooks hooks{};
  hooks.FOpen = [](const char*, const char* access, auto...) -> SAFile {
    const bool isTable = std::strcmp(access, "rb") == 0;  // else the code page file beside it
    return isTable ? reinterpret_cast<SAFile>(opening) : nullptr;
  };
  hooks.FRead = [](void* to, SAOffset size, SAOffset count, SAFile handle) -> SAOffset {
    MemoryFile& file = FileOf(handle);
    if (size == 0 || file.At > file.Bytes.size()) return 0;
    const std::size_t items =
        std::min<std::size_t>(count, (file.Bytes.size() - file.At) / std::size_t{size});
    file.At += file.Bytes.copy(static_cast<char*>(to), items * size, file.At);
    return static_cast<SAOffset>(items);
  };
  hooks.FSeek = [](SAFile handle, SAOffset offset, int) -> SAOffset {
    FileOf(handle).At = offset;  // the library seeks from the beginning only
    return 0;
  };
  hooks.FTell = [](SAFile handle) -> SAOffset { return static_cast<SAOffset>(FileOf(handle).At); };
  hooks.FClose = [](SAFile) { return 0; };
  hooks.Error = [](const char*) {};
  return hooks;
}

struct DbfCloser {
  void operator()(DBFInfo* table) const { DBFClose(table); }
};
using DbfHandle = std::unique_ptr<DBFInfo, DbfCloser>;

DbfHandle OpenInMemory(MemoryFile& file) {
  SAHooks hooks = MemoryHooks();
  opening = &file;
  DbfHandle table(DBFOpenLL("table.dbf", "rb", &hooks));
  opening = nullptr;
  return table;
}

[[noreturn]] void RefuseTable(const std::string& path) {
  throw Failure(failure_number::kExternalTableFormat,
                "External table is not in the expected format: " + path + " is damaged.");
}

void PutRecordCount(std::string& file, std::size_t count) {
  for (std::size_t byte = 4; byte < 8; ++byte, count >>= 8) {
    file[byte] = static_cast<char>(count & 0xFF);
  }
}

/// The live records, one behind the other.
std::string LiveRecords(DBFHandle table, const DbfHeader& header, const std::string& path) {
  std::string records;
  records.reserve(header.RecordCount * header.RecordLength);
  for (int record = 0; record < DBFGetRecordCount(table); ++record) {
    const char* const tuple = DBFReadTuple(table, record);
    if (tuple == nullptr) RefuseTable(path);
    if (*tuple != '*') records.append(tuple, header.RecordLength);
  }
  return records;
}

}  // namespace

DbfTable::DbfTable(DbfHeader header, std::string records)
    : header_(std::move(header)),
      page_(CodePageOf(header_.Language)),
      records_(std::move(records)),
      rowCount_((records_.size() + header_.RecordLength - 1) / header_.RecordLength) {}

int DbfTable::FieldIndex(std::string_view name) const {
  const auto found = std::find_if(Fields().begin(), Fields().end(), [name](const DbfField& field) {
    return SameText(field.Name, name);
  });
  return found == Fields().end() ? -1 : static_cast<int>(found - Fields().begin());
}

Value DbfTable::At(std::size_t row, std::size_t field) const {
  const DbfField& column = Fields()[field];
  if (FlagSet(row, column.NullBit)) return {};
  std::string_view raw = Raw(row, column);
  if (FlagSet(row, column.PartFilledBit) && !raw.empty()) {
    raw = raw.substr(0, static_cast<unsigned char>(raw.back()));
  }
  return DbfValue(column.Type, raw, page_);
}

std::optional<double> DbfTable::NumberAt(std::size_t row, std::size_t field) const {
  const DbfField& column = Fields()[field];
  if (FlagSet(row, column.NullBit)) return std::nullopt;
  return DbfNumericField(column.Type, Raw(row, column));
}

std::string_view DbfTable::Raw(std::size_t row, const DbfField& field) const {
  const std::size_t begin = row * header_.RecordLength + field.Offset;
  if (begin + field.Length > records_.size()) return {};
  return std::string_view(records_).substr(begin, field.Length);
}

bool DbfTable::FlagSet(std::size_t row, int bit) const {
  if (bit < 0 || header_.NullFlagsLength <= static_cast<std::size_t>(bit) / 8) return false;
  const std::size_t byte =
      row * header_.RecordLength + header_.NullFlagsOffset + static_cast<std::size_t>(bit) / 8;
  return byte < records_.size() && (records_[byte] >> (bit % 8) & 1) != 0;
}

DbfTable ReadDbf(const std::string& path) { return ParseDbf(ReadTableFile(path), path); }

DbfTable ParseDbf(std::string file, const std::string& path) {
  DbfHeader header = CheckDbfHeader(file, path);
  const std::size_t needed = header.HeaderLength + header.RecordCount * header.RecordLength;
  const std::size_t missing = needed > file.size() ? needed - file.size() : 0;
  file.resize(file.size() + missing);  // the library reads whole records only
  PutRecordCount(file, header.RecordCount);
  MemoryFile memory{file};
  const DbfHandle table = OpenInMemory(memory);
  if (!table) RefuseTable(path);
  std::string records = LiveRecords(table.get(), header, path);
  const auto lastRecordIsLive = [&] { return file[needed - header.RecordLength] != '*'; };
  if (missing > 0 && lastRecordIsLive()) records.resize(records.size() - missing);
  return DbfTable(std::move(header), std::move(records));
}

}  // namespace ostrel
