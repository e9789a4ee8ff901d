#include "entry/input_boxes.h"

#include <string>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/standard_rate.h"
#include "hours/typed_time.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

TextBox& Box(int index) { return txtInput[static_cast<std::size_t>(index)]; }

std::string LastOf(const char* field, const std::string& selection) {
  return DomainFunc("Prin App", field, selection, "Last").ToText();
}

}  // namespace

void FitQuantityBoxToEvent() {
  TextBox& quantity = Box(kQuantityBox);
  const bool open = !mnuUseTimeClock.Checked || Option1[kPiecework].Value;
  if (!open) {
    quantity.Text = "0";
    if (ScanMain.ActiveControl() == &quantity) Box(kEmplBox).SetFocus();
  }
  quantity.Enabled = open;
}

void InitializeInputBoxes() {
  constexpr FailureTail statement{ScannerModule, "InitializeInputBoxes"};
  std::string latestDay;
  statement(1604, [&] { latestDay = LatestDay(); });
  const std::string selection = WhereDay(latestDay);
  statement(1610, [&] { Box(kEmplBox).Text = LastOf("EMPL_NUMB", selection); });
  statement(1620, [&] { Box(kQuantityBox).Text = LastOf("QUANTITY", selection); });
  if (mnuUseTimeClock.Checked) {
    Box(kTimeBox).Text = Format(Now(), TimeFormat);
    statement(1640, [] { Option1[kClockIn].Value = true; });
  } else {
    statement(1650, [&] { Box(kTimeBox).Text = LastOf("HOURS", selection); });
    statement(1660, [] { Option1[kPiecework].Value = true; });
  }
  statement(1670, [&] { Box(kQuanDescBox).Text = LastOf("QUAN_DESC", selection); });
  statement(1680, [&] { Box(kRateBox).Text = LastOf("RATE", selection); });
  double rate = 0;
  statement(1684, [&] { rate = NumericPrefix(Box(kRateBox).Text); });
  if (rate == kStdRate) {
    Box(kRateBox).Text = kStdRateWord;
    statement(1690, [] { chkStdRate.Value = 1; });
  } else {
    statement(1700, [] { chkStdRate.Value = 0; });
  }
  statement(1710, [&] { Box(kEnterpriseBox).Text = LastOf("ENTERPRISE", selection); });
  statement(1720, [&] { Box(kOperationBox).Text = LastOf("OPERATION", selection); });
  statement(1730, [&] { Box(kEquipBox).Text = LastOf("EQUIP_NUMB", selection); });
  statement(1740, [&] { Box(kMemoBox).Text = LastOf("MEMO", selection); });
  FitQuantityBoxToEvent();
}

void txtInput_GotFocus(int Index) {
  Box(Index).BackColor = kYellow;
  Box(Index).SelStart = 0;
  Box(Index).SelLength = 0;
  FitQuantityBoxToEvent();
}

void txtInput_LostFocus(int Index) {
  constexpr FailureTail statement{ScannerModule, "txtInput_LostFocus"};
  Box(Index).BackColor = kWhite;
  if (Index == kTimeBox && mnuUseTimeClock.Checked) {
    statement(6130, [] { Box(kTimeBox).Text = AppendAmPm(Box(kTimeBox).Text); });
  }
  // The memo box is the end of the row, whatever takes the focus from it.
  if (Index == kMemoBox) statement(6140, [] { Box(kEmplBox).SetFocus(); });
}

void txtInput_KeyDown(int Index, int KeyCode, int /*Shift*/) {
  constexpr FailureTail statement{ScannerModule, "txtInput_KeyDown"};
  const TextBox& box = Box(Index);
  if (KeyCode == key::kLeft && box.CaretAtStart()) {
    statement(6010, [] { TabBack(); });
  } else if (KeyCode == key::kRight && box.CaretAtEnd()) {
    statement(6020, [] { TabForward(); });
  }
}

void txtInput_KeyPress(int Index, int& KeyAscii) {
  constexpr FailureTail statement{ScannerModule, "txtInput_KeyPress"};
  TextBox& box = Box(Index);
  if (KeyAscii == key::kEnter) {
    KeyAscii = 0;
    statement(6060, [] { TabForward(); });
    return;
  }
  if (Index == kRateBox && (KeyAscii == 's' || KeyAscii == 'S')) {
    KeyAscii = 0;
    box.Text = kStdRateWord;
    statement(6080, [] { chkStdRate.Value = 1; });
    statement(6090, [] { TabForward(); });
    return;
  }
  if (box.CaretAtStart()) box.Text = "";
  if (KeyAscii >= 'a' && KeyAscii <= 'z') KeyAscii += 'A' - 'a';
}

void Option1_Click(int /*Index*/) {
  constexpr FailureTail statement{ScannerModule, "Option1_Click"};
  if (Box(kEmplBox).Shown()) statement(5610, [] { Box(kEmplBox).SetFocus(); });
  FitQuantityBoxToEvent();  // where the focus stood in box 0 already, nothing else tells
}

void TabForward() {
  TheDesktop().Post([] { ScanMain.FocusNext(Direction::Forward); });
}

void TabBack() {
  TheDesktop().Post([] { ScanMain.FocusNext(Direction::Back); });
}

}  // namespace ostrel
