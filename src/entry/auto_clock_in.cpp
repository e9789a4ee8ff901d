#include "entry/auto_clock_in.h"

#include <cstdint>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "store/employee_names.h"
#include "store/timecard_store.h"
#include "work_day/work_day.h"

namespace ostrel {

void AutoClockIn(const std::string& AutoClockInVal) {
  constexpr FailureTail statement{ScannerModule, "AutoClockIn"};
  std::int32_t EmplNumb = 0;
  if (!IsDone(statement, 4010, [] { LinesRs.AddNew(); })) return;
  statement(4020, [&] { EmplNumb = ToLong(NumericPrefix(txtInput[kEmplBox].Text)); });
  statement(4030, [&] { LinesRs["EMPL_NUMB"] = EmplNumb; });
  statement(4040, [] { LinesRs["QUANTITY"] = 0; });
  SetSortName(statement, 4050, LinesRs, EmplNumb);
  if (HasWorkDay()) {
    statement(4060, [&] { LinesRs["ETIME"] = OnWorkDay(AutoClockInVal); });
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

}  // namespace ostrel
