#include "platform/database/index_check.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>

namespace ostrel {

namespace {

/// What a walk over all lines came to, whatever their order.
struct Walked {
  std::uint64_t Lines = 0, Sum = 0;
  bool InOrder = true;
  friend bool operator==(const Walked& a, const Walked& b) {
    return a.Lines == b.Lines && a.Sum == b.Sum;
  }
};

std::uint64_t Scattered(std::uint64_t bits) {
  bits = (bits ^ bits >> 31U) * 0x9E3779B97F4A7C15U;
  return (bits ^ bits >> 29U) * 0xBF58476D1CE4E5B9U;
}

Walked Walk(SqliteConnection& connection, const StoreFormat& format, const std::string& source) {
  SqliteStatement lines(
      connection, "SELECT " + format.IndexField + ", rowid FROM " + format.Table.Name + source,
      StoreStep::Read);
  constexpr double unset = -std::numeric_limits<double>::max();  // before all times
  Walked walked;
  std::tuple<double, std::int64_t> before{unset, std::numeric_limits<std::int64_t>::min()};
  while (lines.Step()) {
    const std::tuple line{lines.IsNull(0) ? unset : lines.Real(0), lines.Integer(1)};
    walked.InOrder = walked.InOrder && before < line;
    ++walked.Lines;
    walked.Sum += Scattered(Scattered(std::bit_cast<std::uint64_t>(std::get<0>(line))) +
                            static_cast<std::uint64_t>(std::get<1>(line)));
    before = line;
  }
  return walked;
}

}  // namespace

bool HasIndex(SqliteConnection& connection, std::string_view table, std::string_view index) {
  SqliteStatement found(connection,
                        "SELECT 1 FROM sqlite_schema WHERE type = 'index' AND sql IS NOT NULL "
                        "AND lower(tbl_name) = lower(?1) AND lower(name) = lower(?2)",
                        StoreStep::Read);
  const Value tableName{std::string(table)};
  const Value indexName{std::string(index)};
  found.Bind(1, tableName);
  found.Bind(2, indexName);
  bool exists = false;
  while (found.Step()) exists = true;
  return exists;
}

namespace {

/// Whether the index is over all rows and begins with its field.
bool IsWholeIndex(SqliteConnection& connection, const StoreFormat& format) {
  SqliteStatement found(connection,
                        "SELECT 1 FROM pragma_index_list(?1) AS entry, "
                        "pragma_index_info(entry.name) AS field "
                        "WHERE lower(entry.name) = lower(?2) AND entry.partial = 0 "
                        "AND field.seqno = 0 AND lower(field.name) = lower(?3)",
                        StoreStep::Read);
  const Value table{format.Table.Name}, index{format.IndexName}, field{format.IndexField};
  found.Bind(1, table);
  found.Bind(2, index);
  found.Bind(3, field);
  bool whole = false;
  while (found.Step()) whole = true;
  return whole;
}

}  // namespace

bool IndexHoldsEveryRow(SqliteConnection& connection, const StoreFormat& format) {
  if (!HasIndex(connection, format.Table.Name, format.IndexName)) return true;
  if (!IsWholeIndex(connection, format)) return false;
  const Walked index = Walk(
      connection, format,
      " INDEXED BY " + QuotedName(format.IndexName) + " ORDER BY " + format.IndexField + ", rowid");
  return index.InOrder && index == Walk(connection, format, " NOT INDEXED");
}

}  // namespace ostrel
