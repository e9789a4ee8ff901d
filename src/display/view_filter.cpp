#include "display/view_filter.h"

#include "frame/failure_reporting.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "work_day/work_day.h"

namespace ostrel {

std::string WhereSelect() {
  constexpr FailureTail statement{ScannerModule, "WhereSelect"};
  std::string where;
  if (HasWorkDay()) where = WhereWorkDay();
  if (!mnuDisplayCurrentEmpl.Checked) return where;
  const std::string& employee = txtInput[kEmplBox].Text;
  double number = 0;
  statement(6410, [&] { number = NumericPrefix(employee); });
  if (number <= 0) return where;
  where += where.empty() ? " where " : " and ";
  // The text as it was typed, not the number that was read from it: a box that holds more than a
  // number is reported by the query.
  return where + "EMPL_NUMB = " + employee;
}

}  // namespace ostrel
