#include "hours/auto_clock_in.h"

#include <limits>

#include "entry/date_comment_boxes.h"
#include "entry/scan_main.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/values/dates.h"
#include "platform/values/numbers.h"
#include "store/employee_names.h"
#include "store/timecard_store.h"

namespace ostrel {

namespace {

/// Place of a character in an employee list, or npos.
///   throws  Failure 6 for a list whose positions do not fit 16 bits
std::size_t PlaceIn(const std::string& list, char character) {
  if (list.size() > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
    throw Failure(failure_number::kOverflow, "Overflow: the list of employees is too long.");
  }
  return list.find(character);
}

}  // namespace

void AutoClockIn(const std::string& AutoClockInVal) {
  constexpr FailureTail statement{ScannerModule, "AutoClockIn"};
  std::int32_t EmplNumb = 0;
  statement(4010, [] { LinesRs.AddNew(); });
  statement(4020, [&] { EmplNumb = ToLong(NumericPrefix(txtInput[kEmplBox].Text)); });
  statement(4030, [&] { LinesRs["EMPL_NUMB"] = EmplNumb; });
  statement(4040, [] { LinesRs["QUANTITY"] = 0; });
  SetSortName(statement, 4050, LinesRs, EmplNumb);
  if (IsDate(txtToday.Text)) {
    statement(4060, [&] { LinesRs["ETIME"] = DayOfDateBox() + " " + AutoClockInVal; });
  }
  statement(4070, [] { LinesRs["EVENT_TYPE"] = "I"; });
  statement(4080, [] { LinesRs["QUAN_DESC"] = " "; });
  statement(4090, [] { LinesRs["RATE"] = 0; });
  statement(4100, [] { LinesRs["GROSS"] = 0; });
  statement(4110, [] { LinesRs["ENTERPRISE"] = NumericPrefix(txtInput[kEnterpriseBox].Text); });
  statement(4120, [] { LinesRs["OPERATION"] = NumericPrefix(txtInput[kOperationBox].Text); });
  statement(4130, [] { LinesRs["EQUIP_NUMB"] = NumericPrefix(txtInput[kEquipBox].Text); });
  statement(4140, [] { SetMemo(LinesRs, txtInput[kMemoBox].Text); });
  statement(4150, [] { LinesRs.Update(); });
}

void ParseNextEmpl(std::string& EmplList, std::int32_t& EmplN) {
  constexpr FailureTail statement{ScannerModule, "ParseNextEmpl"};
  std::size_t open = std::string::npos, close = std::string::npos, comma = std::string::npos;
  statement(5650, [&] { open = PlaceIn(EmplList, '('); });
  if (open != std::string::npos) EmplList.erase(0, open + 1);
  statement(5660, [&] { close = PlaceIn(EmplList, ')'); });
  if (close != std::string::npos) EmplList.resize(close);
  statement(5670, [&] { comma = PlaceIn(EmplList, ','); });
  statement(5680, [&] { EmplN = ToLong(NumericPrefix(EmplList)); });
  EmplList.erase(0, comma == std::string::npos ? comma : comma + 1);
}

}  // namespace ostrel
