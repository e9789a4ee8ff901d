#include "display/displayed_lines.h"

#include "display/totals.h"
#include "display/view_filter.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "work_day/work_day.h"

namespace ostrel {

void SetRecordSource() {
  constexpr FailureTail statement{ScannerModule, "SetRecordSource"};
  std::string where;
  statement(5810, [&] { where = WhereSelect(); });
  // The newest line on top while the foreman enters; by employee and upwards in time where he
  // checks.
  Data1.RecordSource =
      "Select * from [OstrelPr]" + where +
      (mnuEmplOrder.Checked ? " Order by EMPL_NUMB, ETIME" : " Order by ETIME Desc");
  statement(5840, [] { Data1.Refresh(); });
  statement(5850, [] { DisplayTotals(); });
}

bool ShowsTheDay() {
  const std::string& query = Data1.RecordSource;
  const bool ofDay = HasWorkDay() ? query.find(WhereWorkDay()) != std::string::npos
                                  : query.find("INT(ETIME)") == std::string::npos;
  return ofDay && Data1.ShowsItsQuery();
}

void mnuEmplOrder_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuEmplOrder_Click"};
  mnuEmplOrder.Checked = !mnuEmplOrder.Checked;
  statement(3105, [] { SetRecordSource(); });
}

void mnuDisplayCurrentEmpl_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuDisplayCurrentEmpl_Click"};
  mnuDisplayCurrentEmpl.Checked = !mnuDisplayCurrentEmpl.Checked;
  if (!mnuDisplayCurrentEmpl.Checked) {
    mnuEmplOrder.Checked = !mnuEmplOrder.Checked;  // the command inverts it back
    statement(3000, [] { mnuEmplOrder_Click(); });
    return;
  }
  double number = 0;
  statement(3002, [&] { number = NumericPrefix(txtInput[kEmplBox].Text); });
  // One employee's lines read best in their order of time: switching them on inverts that check,
  // too.
  if (number > 0) {
    statement(3004, [] { mnuEmplOrder_Click(); });
    return;
  }
  Beep();
  statement(3006, [] {
    MsgBox("No employee number specified!\rEnter an employee number then try again.",
           BoxButtons::Ok, BoxIcon::Information);
  });
  // The check has been set for nothing: the view is as it was and needs no new query.
  mnuDisplayCurrentEmpl.Checked = false;
  statement(3008, [] { txtInput[kEmplBox].SetFocus(); });
}

}  // namespace ostrel
