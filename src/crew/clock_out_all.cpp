#include "crew/clock_out_all.h"

#include <cstdint>
#include <string>

#include "crew/crew_command.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "store/employee_names.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "mnuClockoutAllEmpls_Click"};

/// A clock-out carries neither quantity nor pay nor costing.
void WriteClockOut(std::int32_t EmplNumb, const std::string& time) {
  if (!IsDone(statement, 2430, [] { LinesRs.AddNew(); })) return;
  statement(2440, [&] { LinesRs["EMPL_NUMB"] = EmplNumb; });
  statement(2450, [] { LinesRs["QUANTITY"] = 0; });
  SetSortName(statement, 2460, LinesRs, EmplNumb);
  statement(2470, [&] { LinesRs["ETIME"] = OnWorkDay(time); });
  statement(2480, [] { LinesRs["EVENT_TYPE"] = "O"; });
  statement(2490, [] { LinesRs["QUAN_DESC"] = " "; });
  statement(2500, [] { LinesRs["RATE"] = 0; });
  statement(2510, [] { LinesRs["GROSS"] = 0; });
  statement(2520, [] { LinesRs["ENTERPRISE"] = 0; });
  statement(2530, [] { LinesRs["OPERATION"] = 0; });
  statement(2540, [] { LinesRs["EQUIP_NUMB"] = 0; });
  statement(2550, [] { LinesRs["MEMO"] = " "; });
  statement(2560, [] { LinesRs.Update(); });
}

}  // namespace

void mnuClockoutAllEmpls_Click() {
  CrewCommand command{"Clock out all Employees", mnuClockoutAllEmpls.Caption, {}, {}, 0};
  if (!StartsCrewCommand(statement, 2410, command)) return;
  ForEachEmployee(statement, 2420, command.EmplList,
                  [&](std::int32_t EmplN) { WriteClockOut(EmplN, command.Time); });
  SetMousePointer(MousePointer::Normal);
  statement(2570, [&] {
    MsgBox("All" + SignedNumberText(command.ListCount) + " employees have been clocked out as of " +
               command.Time,
           BoxButtons::Ok, BoxIcon::Information, command.Caption);
  });
  BringDisplayUpToDate(statement, 2580);
}

}  // namespace ostrel
