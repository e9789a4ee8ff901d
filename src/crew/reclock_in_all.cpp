#include "crew/reclock_in_all.h"

#include <cstdint>
#include <optional>
#include <string>

#include "crew/crew_command.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "store/timecard_store.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "mnuReClockInAllEmpls_Click"};

/// Through the rows on show, which so show the new line; where they could not be read, past them.
void CopyClockIn(const std::string& time) {
  Recordset lines = Data1.Recordset;
  const auto begin = [&] {
    if (!lines) lines = PrinDb.OpenRecordset("OstrelPr", RecordsetType::Dynaset);
    lines.AddNew();
  };
  if (!IsDone(statement, 3320, begin)) return;
  int fields = 0;
  statement(3330, [&] { fields = LinesRs.FieldCount(); });
  for (int i = 0; i < fields; ++i) statement(3340, [&] { lines[i] = LinesRs[i]; });
  statement(3350, [&] { lines["ETIME"] = OnWorkDay(time); });
  statement(3360, [&] { lines.Update(); });
}

/// Within each employee the latest clock-in comes first; the lines added on the way do not join the
/// walk.
void WalkClockIns(const std::string& time) {
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

/// All in one durable commit.
void CopyLatestClockIns(const std::string& time) {
  std::optional<Gathering> gathering;
  statement(3294, [&] { gathering.emplace(PrinDb); });
  WalkClockIns(time);
  if (gathering) statement(3380, [&] { gathering->Settle(); });
}

}  // namespace

void mnuReClockInAllEmpls_Click() {
  CrewCommand command{"ReClock in all Employees", mnuReClockInAllEmpls.Caption, {}, {}, 0};
  if (!StartsCrewCommand(statement, 3284, command)) return;
  const std::string query = "Select * from [OstrelPr]" + WhereWorkDay() +
                            " and EVENT_TYPE = 'I' order by EMPL_NUMB, ETIME Desc";
  UnbindLines();
  statement(3290, [&] { LinesRs = PrinDb.OpenRecordset(query, RecordsetType::Dynaset); });
  if (LinesRs) CopyLatestClockIns(command.Time);
  SetMousePointer(MousePointer::Normal);
  statement(3390, [&] {
    MsgBox("All" + SignedNumberText(command.ListCount) +
               " employees have been clocked back in as of " + command.Time,
           BoxButtons::Ok, BoxIcon::Information, command.Caption);
  });
  BringDisplayUpToDate(statement, 3400);
}

}  // namespace ostrel
