#include "platform/database/day_index.h"

#include <algorithm>
#include <tuple>

namespace ostrel {

std::optional<std::vector<Bookmark>> DayIndex::LinesOf(const DayOfEmployee& asked,
                                                       std::uint64_t keyChanges) {
  if (asked_last_ != asked.Day) {
    asked_last_ = asked.Day;
    read_ = false;
    return {};
  }
  // Taken before the day is read: a commit of others in between makes it look old, never young.
  const Version now{keyChanges, connection_.DataVersion()};
  if (!read_ || now != version_) Read(asked.Day);
  version_ = now;

  const auto byEmployee = [](const Line& line, float number) { return line.EmplNumb < number; };
  auto line = std::lower_bound(lines_.begin(), lines_.end(), asked.EmplNumb, byEmployee);
  std::vector<Bookmark> rows;
  for (; line != lines_.end() && line->EmplNumb == asked.EmplNumb; ++line) {
    rows.push_back(line->Row);
  }
  return rows;
}

void DayIndex::Read(double day) {
  read_ = false;
  lines_.clear();
  SqliteStatement& lines = connection_.Question(
      "SELECT rowid, EMPL_NUMB, ETIME FROM OstrelPr "
      "WHERE ETIME >= ?1 AND ETIME < ?2 AND EMPL_NUMB IS NOT NULL");
  lines.Bind(1, Value(day));
  lines.Bind(2, Value(day + 1));
  while (lines.Step()) {
    lines_.push_back({static_cast<float>(lines.Real(1)), lines.Real(2), lines.Integer(0)});
  }
  std::sort(lines_.begin(), lines_.end(), [](const Line& a, const Line& b) {
    return std::tie(a.EmplNumb, a.Etime, a.Row) < std::tie(b.EmplNumb, b.Etime, b.Row);
  });
  read_ = true;
}

}  // namespace ostrel
