#include "display/line_commands.h"

#include <string>
#include <vector>

#include "display/displayed_lines.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"

namespace ostrel {

namespace {

/// throws  Failure 438 when nothing has the focus
Control& Focused() {
  Control* control = ScanMain.ActiveControl();
  if (control != nullptr) return *control;
  throw Failure(failure_number::kNoSuchProperty,
                "Object doesn't support this property: nothing has the focus.");
}

std::string DeleteQuestion(std::size_t count) {
  if (count == 1) return "Delete this line?";
  return "Delete these" + SignedNumberText(static_cast<double>(count)) + " lines?";
}

}  // namespace

void mnuDeleteLine_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuDeleteLine_Click"};
  const std::vector<Bookmark> selected = TDBGrid1.SelBookmarks;
  if (selected.empty()) {
    statement(2880, [] {
      MsgBox(
          "To select a line to delete, click in the box on its left edge then redo this command.",
          BoxButtons::Ok, BoxIcon::Information);
    });
    return;
  }
  BoxAnswer answer = BoxAnswer::Cancel;
  statement(2884, [&] {
    answer = MsgBox(DeleteQuestion(selected.size()), BoxButtons::OkCancel, BoxIcon::Question,
                    "Delete Selected Line");
  });
  if (answer == BoxAnswer::Cancel) return;
  for (const Bookmark bookmark : selected) {
    bool there = false;
    statement(2888, [&] {
      Data1.Recordset.SetBookmark(bookmark);
      there = true;
    });
    // Without the move the line to go would be some other one.
    if (there) statement(2890, [] { Data1.Recordset.Delete(); });
  }
  statement(2894, [] { SetRecordSource(); });
  statement(2898, [] { txtInput[kEmplBox].SetFocus(); });
}

void mnuCopy_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuCopy_Click"};
  statement(2610, [] { TheDesktop().SetClipboardText(Focused().SelText()); });
}

void mnuCut_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuCut_Click"};
  statement(2650, [] { TheDesktop().SetClipboardText(Focused().SelText()); });
  statement(2660, [] { Focused().SetSelText(""); });
}

void mnuPaste_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuPaste_Click"};
  statement(3150, [] { Focused().SetSelText(TheDesktop().ClipboardText()); });
}

void mnuJumpQDesc_Click() {
  constexpr FailureTail edge{ScannerModule, "mnuJumpQDesc_Click"};
  edge(3130, [] { txtInput[kQuanDescBox].SetFocus(); });
}

}  // namespace ostrel
