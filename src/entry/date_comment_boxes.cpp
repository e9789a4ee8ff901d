#include "entry/date_comment_boxes.h"

#include "display/displayed_lines.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/values/clock.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "scan_main/scan_main.h"

namespace ostrel {

namespace {

void LightUp(TextBox& box) {
  box.BackColor = kYellow;
  box.SelStart = 0;
  box.SelLength = 0;
}

/// An arrow that would leave the box at either end goes back to the row of input boxes.
bool LeavesBox(const TextBox& box, int KeyCode) {
  return (KeyCode == key::kLeft && box.CaretAtStart()) ||
         (KeyCode == key::kRight && box.CaretAtEnd());
}

}  // namespace

void txtToday_GotFocus() { LightUp(txtToday); }

void txtToday_LostFocus() {
  constexpr FailureTail statement{ScannerModule, "txtToday_LostFocus"};
  if (ScanMain.ActiveControl() != &txtToday) txtToday.BackColor = kWhite;
  const std::string typed = txtToday.Text;
  if (IsDate(typed)) {
    const Moment day{DateValue(typed)};
    txtToday.Text = Format(day, DateFormat);
    lblToday.Caption = Format(day, "dddd");
  } else {
    txtToday.Text = "All";
    lblToday.Caption = "";
  }
  statement(6310, [] { lblToday.Refresh(); });
  statement(6320, [] { SetRecordSource(); });
}

void txtToday_KeyDown(int KeyCode, int /*Shift*/) {
  constexpr FailureTail statement{ScannerModule, "txtToday_KeyDown"};
  if (LeavesBox(txtToday, KeyCode)) {
    statement(6230, [] { txtInput[kEmplBox].SetFocus(); });
  } else if (txtToday.CaretAtStart()) {
    txtToday.Text = "";
    txtToday.HalfTyped = true;
  }
}

void txtToday_KeyPress(int& KeyAscii) {
  constexpr FailureTail statement{ScannerModule, "txtToday_KeyPress"};
  if (KeyAscii != key::kEnter) return;
  KeyAscii = 0;
  statement(6270, [] { txtInput[kEmplBox].SetFocus(); });
}

void txtComments_GotFocus() { LightUp(txtComments); }

void txtComments_LostFocus() { txtComments.BackColor = kWhite; }

void txtComments_KeyDown(int KeyCode, int /*Shift*/) {
  constexpr FailureTail statement{ScannerModule, "txtComments_KeyDown"};
  if (LeavesBox(txtComments, KeyCode)) statement(5910, [] { txtInput[kEmplBox].SetFocus(); });
}

void txtComments_KeyPress(int& KeyAscii) {
  constexpr FailureTail statement{ScannerModule, "txtComments_KeyPress"};
  if (KeyAscii == key::kEnter) {
    KeyAscii = 0;
    statement(5930, [] { txtInput[kEmplBox].SetFocus(); });
  } else if (txtComments.CaretAtStart()) {
    txtComments.Text = "";
  }
}

void mnuDisplayAllDates_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuDisplayAllDates_Click"};
  mnuDisplayAllDates.Checked = !mnuDisplayAllDates.Checked;
  txtToday.Text = mnuDisplayAllDates.Checked ? "All" : Format(Now(), DateFormat);
  statement(2990, [] { txtToday_LostFocus(); });
}

}  // namespace ostrel
