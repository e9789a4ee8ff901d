#include "store/day_lines.h"

namespace ostrel {

void DayLines::LookThrough() {
  lines_.clear();
  hold_.reset();
  Recordset lines = store_.OpenRecordset("Select * from [OstrelPr]" + where_ + " order by ETIME",
                                         RecordsetType::Dynaset);
  for (; !lines.Eof(); lines.MoveNext()) {
    const Value number = lines["EMPL_NUMB"];
    if (!number.IsNull()) {
      lines_[static_cast<float>(number.NumberOrZero())].push_back(lines.GetBookmark());
    }
  }
  hold_ = store_.Hold();
}

Recordset DayLines::Of(std::int32_t EmplNumb) {
  if (hold_.expired()) LookThrough();
  return store_.OpenRows(lines_[static_cast<float>(EmplNumb)]);
}

}  // namespace ostrel
