#include "display/totals.h"

#include <cstdint>
#include <string>

#include "display/view_filter.h"
#include "frame/failure_reporting.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "work_day/work_day.h"

namespace ostrel {

void DisplayTotals() {
  constexpr FailureTail statement{ScannerModule, "DisplayTotals"};
  std::string where;
  statement(4710, [&] { where = WhereSelect(); });
  const auto showSum = [&](std::int32_t line, const char* field, const char* pattern) {
    statement(line, [&] {
      TDBGrid1.Columns(field).FooterText =
          Format(DomainFunc("Prin App", field, where, "Sum"), pattern);
    });
  };
  showSum(4720, "QUANTITY", "");
  showSum(4730, "HOURS", "#,##0.00");
  showSum(4740, "GROSS", "#,##0.00");
  // "All", or whatever is half typed, stands under the dates as it is.
  const std::string& day = txtToday.Text;
  TDBGrid1.Columns("Date").FooterText =
      HasWorkDay() ? Format(Moment{DateValue(day)}, "mm/dd") : day;

  std::int32_t count = 0;
  statement(4760, [&] { count = DomainFunc("Prin App", "EMPL_NUMB", where, "Count").ToLong(); });
  lblLineCt.Caption = std::to_string(count) + (count == 1 ? " line" : " lines");
  statement(4780, [] { lblLineCt.Refresh(); });
  statement(4790, [] { TDBGrid1.Refresh(); });
}

}  // namespace ostrel
