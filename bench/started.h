#pragma once

// The program started on a store of so many lines, for benchmarks of its commands.

#include <functional>
#include <string>
#include <vector>

#include "store_floor.h"
#include "support/payroll.h"

namespace ostrel {

inline constexpr int kBigDayLines = 5000;

/// 700 of the lines are on the day on show.
class Started {
 public:
  explicit Started(int lines, const std::string& employees = {}) {
    FillStore(Path(), lines);
    if (!employees.empty()) laptop_.Folder.Write("app/Prms1234.dbf", employees);
    laptop_.SetClock("06/14/04 5:30 pm");
    laptop_.Start();
  }
  std::string Path() const { return laptop_.App("Prin1234.mdb"); }
  std::string Disk(std::string_view name) const { return laptop_.Disk(name); }
  ScriptedDesktop& Desktop() { return laptop_.Desktop; }

 private:
  Payroll laptop_;
};

/// A day of 200 employees: each clocks in, does 23 pieces of work and clocks out.
inline void MakeBigDay(const RawStore& raw) {
  raw.Run("DELETE FROM OstrelPr WHERE ETIME >= 38152");
  raw.Run(
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < 5000) "
      "INSERT INTO OstrelPr SELECT 101 + i % 200, 'EMPLOYEE', 38152 + (420 + i / 200 * 20) / "
      "1440.0, NULL, "
      "CASE i / 200 WHEN 0 THEN 'I' WHEN 24 THEN 'O' ELSE 'P' END, i % 7 * 12.5 + 1, 'BOX', 1, i % "
      "5, 3, "
      "'block', 0.27, NULL, NULL, NULL FROM n");
}

inline std::vector<std::int64_t> RowsOfBigDay(const RawStore& raw) {
  std::vector<std::int64_t> ids = ListRowsByTime(raw);
  ids.resize(kBigDayLines);
  return ids;
}

}  // namespace ostrel
