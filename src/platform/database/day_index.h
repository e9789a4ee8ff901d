#pragma once

// The lines of one day by employee, in memory. While the hours of a day are worked out, the store is
// asked for each employee's lines of that day in turn; reading the whole day for each of 200
// employees would be most of the work. One answer costs no more than before: the day is gathered
// only when it is asked for a second time in a row.

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/database/recordset.h"
#include "platform/database/sqlite_connection.h"
#include "platform/database/store_query.h"

namespace ostrel {

class DayIndex {
 public:
  explicit DayIndex(SqliteConnection& connection) : connection_(connection) {}

  /// Row ids of the employee's lines of the day in the order of ETIME, among equals in the order of
  /// entry. Nothing when the day has not been asked for just before.
  ///   keyChanges  what SharedCommit::KeyChanges says now
  std::optional<std::vector<Bookmark>> LinesOf(const DayOfEmployee& asked,
                                               std::uint64_t keyChanges);

 private:
  struct Line {
    float EmplNumb;
    double Etime;
    Bookmark Row;
  };
  /// What must not have changed since the day was read.
  struct Version {
    std::uint64_t Own = 0;       // key changes through this connection
    std::int64_t OfOthers = -1;  // SQLite's count of commits by others
    friend bool operator==(const Version&, const Version&) = default;
  };
  void Read(double day);

  SqliteConnection& connection_;
  std::optional<double> asked_last_;
  bool read_ = false;
  Version version_;
  std::vector<Line> lines_;  // by employee, ETIME, row
};

}  // namespace ostrel
