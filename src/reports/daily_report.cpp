#include "reports/daily_report.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "display/displayed_lines.h"
#include "display/view_filter.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/grid_print.h"
#include "platform/values/numbers.h"
#include "reports/paper.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "store/number_list.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "mnuEmplDailyRpt_Click"};

std::string HeaderFor(const std::string& employee) {
  return lblClient.Caption.Get() + " Employee#" + employee + "    ** " + txtToday.Text.Get() +
         " **   " + lblToday.Caption.Get() + "    " + txtComments.Text.Get();
}

/// Prints the employee that the rest of the list begins with.
///   returns  the PDF, or the empty text when it went to a printer or nowhere
std::string PrintEmployee(const std::string& list) {
  std::int32_t EmplNumber = 0;
  statement(3010, [&] { EmplNumber = ToLong(NumericPrefix(list)); });
  const std::string employee = SignedNumberText(EmplNumber);
  txtInput[kEmplBox].Text = employee;
  statement(3020, [] { SetRecordSource(); });
  statement(3030, [] { DoEvents(); });    // the grid on the screen follows
  if (!Data1.ShowsItsQuery()) return {};  // not another's lines on this employee's sheet
  TDBGrid1.PrintInfo.PageHeader = HeaderFor(employee);
  std::unique_ptr<PrintJob> job;
  std::string file;
  statement(3040, [&] { job = PrintData(TDBGrid1, ViewOnPaper("Employee" + employee)); });
  if (job != nullptr) statement(3050, [&] { file = job->EndDoc(); });
  return file;
}

std::string EmployeesOnShow() {
  std::string filter, NotList;
  std::int32_t ListCount = 0;
  statement(3060, [&] { filter = WhereSelect(); });
  return WithoutBrackets(DomainList("Prin App", "EMPL_NUMB", filter, NotList, ListCount));
}

}  // namespace

void mnuEmplDailyRpt_Click() {
  const bool SavedOrder = mnuEmplOrder.Checked;
  const bool SavedCurrent = mnuDisplayCurrentEmpl.Checked;
  mnuEmplOrder.Checked = false;
  mnuDisplayCurrentEmpl.Checked = false;
  std::string EmplList = EmployeesOnShow();
  mnuDisplayCurrentEmpl.Checked = true;

  std::vector<std::string> files;
  std::size_t comma = EmplList.find(',');
  for (; comma != std::string::npos; comma = EmplList.find(',')) {
    files.push_back(PrintEmployee(EmplList));
    EmplList.erase(0, comma + 1);
  }
  files.push_back(PrintEmployee(EmplList));

  mnuEmplOrder.Checked = SavedOrder;
  mnuDisplayCurrentEmpl.Checked = SavedCurrent;
  statement(3070, [] { SetRecordSource(); });
  statement(3080, [] { DoEvents(); });
  statement(3090, [&] {
    MsgBox({.Text = "Report printed.", .Icon = BoxIcon::Information, .Detail = WhereToFind(files)});
  });
  statement(3100, [] { txtInput[kEmplBox].SetFocus(); });
}

}  // namespace ostrel
