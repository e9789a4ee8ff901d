#include "display/totals.h"

#include <cstdint>
#include <optional>
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
  // Asked by whichever statement comes first, and by one pass over the lines for all four.
  std::optional<Totals> asked;
  const auto totals = [&]() -> const Totals& {
    if (!asked) asked = TotalsOf(where);
    return *asked;
  };
  const auto showSum = [](const char* field, double sum, const char* pattern) {
    TDBGrid1.Columns(field).FooterText = Format(sum, pattern);
  };
  statement(4720, [&] { showSum("QUANTITY", totals().Quantity, ""); });
  statement(4730, [&] { showSum("HOURS", totals().Hours, "#,##0.00"); });
  statement(4740, [&] { showSum("GROSS", totals().Gross, "#,##0.00"); });
  // "All", or whatever is half typed, stands under the dates as it is.
  const std::string& day = txtToday.Text;
  TDBGrid1.Columns("Date").FooterText =
      HasWorkDay() ? Format(Moment{DateValue(day)}, "mm/dd") : day;

  std::int32_t count = 0;
  statement(4760, [&] { count = totals().Lines; });
  lblLineCt.Caption = std::to_string(count) + (count == 1 ? " line" : " lines");
  statement(4780, [] { lblLineCt.Refresh(); });
  statement(4790, [] { TDBGrid1.Refresh(); });
}

}  // namespace ostrel
