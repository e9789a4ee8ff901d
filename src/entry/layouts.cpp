#include "entry/layouts.h"

#include "entry/input_boxes.h"
#include "frame/failure_reporting.h"
#include "scan_main/scan_main.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "mnuUseTimeClock_Click"};

void ShowWhatClocksTime(bool timeClock) {
  Frame1.Visible = timeClock;
  CurTimeCtl1.Visible = timeClock;
  lblClockOff.Visible = false;  // in either layout: the clock shows, or nothing does
  for (MenuItem* item : {&mnuDefaultClockIn, &mnuDefaultClockOut, &mnuAutosetTime, &mnuMinWageWatch,
                         &mnuClockoutAllEmpls, &mnuReClockInAllEmpls}) {
    item->Visible = timeClock;
  }
}

/// Twips; box 2 and the button change places in the row and in tab order.
void PlaceBoxes(bool timeClock) {
  TextBox& quantity = txtInput[kQuantityBox];
  TextBox& time = txtInput[kTimeBox];
  const int button = timeClock ? 0 : time.Width;
  const int shift = timeClock ? 0 : txtInput[kQuanDescBox].Width * 132 / 100;
  if (!timeClock) time.Enabled = true;
  time.Left = timeClock ? 3510 : quantity.Left + quantity.Width;
  time.TabIndex = timeClock ? 3 : 2;
  cmdSave.TabIndex = timeClock ? 2 : 3;
  time.Align = timeClock ? Alignment::Center : Alignment::Right;
  txtInput[kQuanDescBox].Left = 5745 - shift;
  txtInput[kRateBox].Left = 6330 - shift;
  chkStdRate.Left = txtInput[kRateBox].Left;
  Shape1.Left = 2085 + button;
  cmdSave.Left = 2265 + button;
  // The settings may show the clock in the plain layout too; there it makes way for the button.
  CurTimeCtl1.Left = timeClock ? 3525 : Shape1.Left + Shape1.Width + 30;
}

void ShowColumns(bool timeClock) {
  TDBGrid1.Columns("HOURS").Visible = !timeClock;
  TDBGrid1.Columns("TIME").Visible = timeClock;
  TDBGrid1.Columns("I/O/Pce").Visible = timeClock;
}

}  // namespace

void mnuUseTimeClock_Click() {
  mnuUseTimeClock.Checked = !mnuUseTimeClock.Checked;
  const bool timeClock = mnuUseTimeClock.Checked;
  statement(3250, [&] { ShowWhatClocksTime(timeClock); });
  statement(3260, [&] { PlaceBoxes(timeClock); });
  statement(3270, [&] { ShowColumns(timeClock); });
  frmCosting.Left = timeClock ? 8775 : 8010;
  statement(3280, [] { InitializeInputBoxes(); });
  FitQuantityBoxToEvent();
}

}  // namespace ostrel
