#include "display/displayed_lines.h"

#include "display/totals.h"
#include "entry/scan_main.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/dates.h"
#include "platform/values/numbers.h"
#include "store/lookups.h"

namespace ostrel {

std::string WhereSelect() {
  constexpr FailureTail statement{ScannerModule, "WhereSelect"};
  std::string where;
  if (IsDate(txtToday.Text)) where = WhereDay(txtToday.Text);
  if (!mnuDisplayCurrentEmpl.Checked) return where;
  const std::string& employee = txtInput[kEmplBox].Text;
  double number = 0;
  statement(6410, [&] { number = NumericPrefix(employee); });
  if (number <= 0) return where;
  where += where.empty() ? " where " : " and ";
  return where + "EMPL_NUMB = " + employee;
}

void SetRecordSource() {
  constexpr FailureTail statement{ScannerModule, "SetRecordSource"};
  std::string where;
  statement(5810, [&] { where = WhereSelect(); });
  Data1.RecordSource =
      "Select * from [OstrelPr]" + where +
      (mnuEmplOrder.Checked ? " Order by EMPL_NUMB, ETIME" : " Order by ETIME Desc");
  statement(5840, [] { Data1.Refresh(); });
  statement(5850, [] { DisplayTotals(); });
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
  if (number > 0) {
    statement(3004, [] { mnuEmplOrder_Click(); });
    return;
  }
  Beep();
  statement(3006, [] {
    MsgBox("No employee number specified!\rEnter an employee number then try again.",
           BoxButtons::Ok, BoxIcon::Information);
  });
  mnuDisplayCurrentEmpl.Checked = false;
  statement(3008, [] { txtInput[kEmplBox].SetFocus(); });
}

}  // namespace ostrel
