#include "platform/database/index_check.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>

#include "platform/database/store_fields.h"

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

Walked Walk(SqliteConnection& connection, const std::string& source) {
  SqliteStatement lines(connection, "SELECT ETIME, rowid FROM OstrelPr " + source, StoreStep::Read);
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

bool IndexHoldsEveryLine(SqliteConnection& connection) {
  if (!HasIndex(connection, kLineTableName, "dTime")) return true;
  const Walked index = Walk(connection, "INDEXED BY dTime ORDER BY ETIME, rowid");
  return index.InOrder && index == Walk(connection, "NOT INDEXED");
}

}  // namespace ostrel
