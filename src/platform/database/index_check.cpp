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

bool HasIndex(SqliteConnection& connection) {
  SqliteStatement index(connection,
                        "SELECT 1 FROM sqlite_schema WHERE type = 'index' AND name = 'dTime'",
                        StoreStep::Read);
  bool found = false;
  while (index.Step()) found = true;
  return found;
}

}  // namespace

bool IndexHoldsEveryLine(SqliteConnection& connection) {
  if (!HasIndex(connection)) return true;
  const Walked index = Walk(connection, "INDEXED BY dTime ORDER BY ETIME, rowid");
  return index.InOrder && index == Walk(connection, "NOT INDEXED");
}

}  // namespace ostrel
