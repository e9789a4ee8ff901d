#pragma once

// A dBase table in memory: its live records as the file has them, each field turned into a value
// only when it is asked for. Whoever needs the office's tables (table_folder.h) reads one whole and
// keeps it; no handle stays on the file, which an update of the descriptions must be able to
// replace at any time.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database/dbf_code_page.h"
#include "platform/database/dbf_header.h"
#include "platform/values/value.h"

namespace ostrel {

class DbfTable {
 public:
  /// `records`: the live records, one behind the other, the last one possibly cut short.
  DbfTable(DbfHeader header, std::string records);

  const std::vector<DbfField>& Fields() const { return header_.Fields; }
  int FieldIndex(std::string_view name) const;  ///< in any case; -1 when there is no such field

  std::size_t RowCount() const { return rowCount_; }
  /// What the value rules are: dbf_values.h. `row` < RowCount(), `field` < Fields().size().
  Value At(std::size_t row, std::size_t field) const;

  /// The number in a numeric field; nothing where At is Null or no number.
  std::optional<double> NumberAt(std::size_t row, std::size_t field) const;

 private:
  std::string_view Raw(std::size_t row, const DbfField& field) const;
  bool FlagSet(std::size_t row, int bit) const;

  DbfHeader header_;
  CodePage page_;
  std::string records_;
  std::size_t rowCount_;
};

/// Reads a table as the file is now. The name's last component matches in any case.
///   throws  Failure 3078 not there, 3275 cannot be read, 3274 no dBase table or a damaged one
DbfTable ReadDbf(const std::string& path);

/// The same of a file's bytes; `path` only names it in a failure.
DbfTable ParseDbf(std::string file, const std::string& path);

}  // namespace ostrel
