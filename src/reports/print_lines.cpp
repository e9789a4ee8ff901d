#include "reports/print_lines.h"

#include <memory>
#include <string>

#include "display/displayed_lines.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/grid_print.h"
#include "reports/paper.h"
#include "scan_main/scan_main.h"

namespace ostrel {

namespace {

/// The weekday is missing exactly when the view shows all dates.
std::string DayInHeader() {
  const std::string& weekday = lblToday.Caption;
  return "    ** " + txtToday.Text.Get() + (weekday.empty() ? "" : ", " + weekday) + " **    ";
}

}  // namespace

void mnuPrintLines_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuPrintLines_Click"};
  // Rows of another day must not come to paper under the heading of this one.
  if (!ShowsTheDay()) statement(3154, [] { SetRecordSource(); });
  if (!ShowsTheDay()) return;
  TDBGrid1.PrintInfo.PageHeader =
      lblClient.Caption.Get() + DayInHeader() + "    " + txtComments.Text.Get();
  if (mnuUseTimeClock.Checked) {
    statement(3160, [] {
      Column& memo = TDBGrid1.Columns("Memo");
      memo.Width = memo.Width / 2;
    });
  }
  std::unique_ptr<PrintJob> job;
  std::string file;
  statement(3170, [&] { job = PrintData(TDBGrid1, ViewOnPaper("Displayed lines")); });
  if (job != nullptr) statement(3180, [&] { file = job->EndDoc(); });
  if (mnuUseTimeClock.Checked) {
    statement(3190, [] {
      Column& memo = TDBGrid1.Columns("Memo");
      memo.Width = memo.Width * 2;
    });
  }
  statement(3200, [&] {
    MsgBox({.Text = txtToday.Text.Get() + " report printed.",
            .Icon = BoxIcon::Information,
            .Detail = WhereToFind({file})});
  });
  statement(3204, [] { txtInput[kEmplBox].SetFocus(); });
}

}  // namespace ostrel
