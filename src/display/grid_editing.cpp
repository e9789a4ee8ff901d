#include "display/grid_editing.h"

#include <string>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/standard_rate.h"
#include "platform/desktop/desktop.h"
#include "platform/values/dates.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"
#include "store/timecard_store.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "TDBGrid1_BeforeColUpdate"};
// What the grid takes for true, all bits set.
constexpr std::int16_t kTrue = -1;

/// The line whose cell is edited.
Recordset& Line() { return Data1.Recordset; }

void BringName() {
  float EmplNumb = 0;
  statement(5870, [&] {
    EmplNumb = static_cast<float>(NumericPrefix(TDBGrid1.CellText(TDBGrid1.ColumnNumber("Empl#"))));
  });
  if (!(EmplNumb > 0)) return;
  statement(5872, [&] { PrmsRs.Seek("=", EmplNumb); });
  if (Data1.Mode() == EditMode::None) statement(5874, [] { Line().Edit(); });
  bool found = false;
  statement(5876, [&] { found = !PrmsRs.NoMatch(); });
  if (found) {
    statement(5878, [] { Line()["SORT_NAME"] = PrmsRs["SORT_NAME"].Get(); });
  } else {
    // One blank stands for no name: the field of a line is never empty.
    statement(5880, [] { Line()["SORT_NAME"] = " "; });
  }
  statement(5882, [&] { BlankIfEmpty(Line()["SORT_NAME"]); });
  statement(5884, [] { Line().Update(); });
}

/// An empty cell is a slip of the hand: the other one alone would move the line to midnight, or a
/// hundred years back.
void JoinDateAndTime() {
  std::string date, time;
  statement(5885, [&] { date = TDBGrid1.CellText(TDBGrid1.ColumnNumber("Date")); });
  statement(5886, [&] { time = TDBGrid1.CellText(TDBGrid1.ColumnNumber("Time")); });
  const std::string text = date + " " + time;
  if (Trim(date).empty() || Trim(time).empty() || !IsDate(text)) {
    Beep();
    statement(5888, [&] {
      MsgBox("Bad Date: " + text + "\rignoring", BoxButtons::Ok, BoxIcon::Exclamation);
    });
    return;
  }
  if (Data1.Mode() == EditMode::None) statement(5890, [] { Line().Edit(); });
  statement(5892, [&] { Line()["ETIME"] = text; });
  statement(5894, [] { Line().Update(); });
}

}  // namespace

void TDBGrid1_BeforeColUpdate(int ColIndex, const Value& /*OldValue*/, std::int16_t& Cancel) {
  std::string field;
  statement(5866, [&] { field = TDBGrid1.Columns(ColIndex).DataField; });
  if (SameText(field, "EMPL_NUMB")) {
    BringName();
  } else if (SameText(field, "ETIME")) {
    JoinDateAndTime();
    // The two columns show halves of one field. The grid would write the half that was typed over
    // the whole moment, so it writes nothing and the moment is written here.
    Cancel = kTrue;
  }
}

void TDBGrid1_KeyPress(int& KeyAscii) {
  constexpr FailureTail keyStatement{ScannerModule, "TDBGrid1_KeyPress"};
  std::string field;
  keyStatement(5896, [&] { field = TDBGrid1.Columns(TDBGrid1.Col).DataField; });
  // Behind the digits come the letters. Which one is pressed does not matter: a rate has none.
  if (!SameText(field, "RATE") || KeyAscii <= '9') return;
  if (Data1.Mode() == EditMode::None) keyStatement(5897, [] { Line().Edit(); });
  keyStatement(5898, [] { Line()["RATE"] = kStdRate; });
  keyStatement(5899, [] { Line().Update(); });
  keyStatement(5900, [] { Data1.UpdateRecord(); });
  keyStatement(5901, [] { Data1.Refresh(); });
  keyStatement(5902, [] { TDBGrid1.Refresh(); });
  // With the focus gone, the letter itself goes nowhere.
  keyStatement(5903, [] { txtInput[kEmplBox].SetFocus(); });
}

}  // namespace ostrel
