#include "crew/reclock_in_all.h"

#include <cstdint>
#include <string>

#include "crew/crew_command.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "mnuReClockInAllEmpls_Click"};

void CopyClockIn(const std::string& time) {
  if (!IsDone(statement, 3320, [] { Data1.Recordset.AddNew(); })) return;
  int fields = 0;
  statement(3330, [&] { fields = LinesRs.FieldCount(); });
  for (int i = 0; i < fields; ++i) statement(3340, [&] { Data1.Recordset[i] = LinesRs[i]; });
  statement(3350, [&] { Data1.Recordset["ETIME"] = OnWorkDay(time); });
  statement(3360, [] { Data1.Recordset.Update(); });
}

/// Within each employee the latest clock-in comes first; the lines added on the way do not join the
/// walk.
void CopyLatestClockIns(const std::string& time) {
  Value lastEmpl;  // as stored: 12 and 12.5 are two; a line of nobody is like none
  bool more = false;
  statement(3300, [&] { more = !LinesRs.Eof(); });
  while (more) {
    Value empl = lastEmpl;
    statement(3310, [&] { empl = LinesRs["EMPL_NUMB"]; });
    if (empl != lastEmpl) CopyClockIn(time);
    lastEmpl = empl;
    more = false;  // a line that cannot be stepped over ends the walk
    statement(3370, [&] {
      LinesRs.MoveNext();
      more = !LinesRs.Eof();
    });
  }
}

}  // namespace

void mnuReClockInAllEmpls_Click() {
  CrewCommand command{"ReClock in all Employees", mnuReClockInAllEmpls.Caption, {}, {}, 0};
  if (!StartsCrewCommand(statement, 3284, command)) return;
  const std::string query = "Select * from [OstrelPr]" + WhereWorkDay() +
                            " and EVENT_TYPE = 'I' order by EMPL_NUMB, ETIME Desc";
  statement(3290, [&] { LinesRs = PrinDb.OpenRecordset(query, RecordsetType::Dynaset); });
  statement(3294, [] { PrinDb.ShareCommits(); });
  CopyLatestClockIns(command.Time);
  statement(3380, [] { PrinDb.CommitShared(); });
  SetMousePointer(MousePointer::Normal);
  statement(3390, [&] {
    MsgBox("All" + SignedNumberText(command.ListCount) +
               " employees have been clocked back in as of " + command.Time,
           BoxButtons::Ok, BoxIcon::Information, command.Caption);
  });
  BringDisplayUpToDate(statement, 3400);
}

}  // namespace ostrel
