#include "display/grid_editing.h"

#include <string>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/standard_rate.h"
#include "platform/desktop/desktop.h"
#include "platform/values/dates.h"
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

enum class Fit { Unknown, Taken, Refused };

/// Puts the cell's new text into the line's edit buffer, where the field's type has its say.
Fit TryText(const std::string& field, const std::string& text) {
  Fit fit = Fit::Unknown;
  if (Data1.Mode() == EditMode::None) statement(5867, [] { Line().Edit(); });
  if (Data1.Mode() == EditMode::None) return fit;
  statement(5868, [&] {
    try {
      Line()[field] = text;
      fit = Fit::Taken;
    } catch (const Failure& failure) {
      if (failure.Number != failure_number::kFieldConversion &&
          failure.Number != failure_number::kOverflow)
        throw;
      fit = Fit::Refused;
    }
  });
  return fit;
}

/// Whether the new text of a cell that is no moment may go into its field. An emptied number is a
/// slip of the hand: a line without one would be paid, or lost, by guess.
bool TakesText(int ColIndex, const std::string& field, const Value& OldValue) {
  const std::string text = TDBGrid1.CellText(ColIndex);
  const std::string& word = TDBGrid1.Columns(ColIndex).TranslatedWord;
  if (!word.empty() && SameText(text, word)) return true;
  if (OldValue.IsText()) return true;
  const Fit fit = Trim(text).empty() ? Fit::Refused : TryText(field, text);
  if (fit == Fit::Refused) {
    Beep();
    statement(5869, [&] {
      MsgBox("Bad number: " + text + ", ignoring", BoxButtons::Ok, BoxIcon::Exclamation);
    });
  }
  return fit == Fit::Taken;
}

/// Writes the new number, which stands in the edit buffer, together with its name: both or neither.
///   Cancel  out: the grid has nothing left to write; as it was for a number that is no employee's
void BringName(std::int16_t& Cancel) {
  Value EmplNumb;
  // Each step is needed for the next one; where one is passed over nothing is written.
  Cancel = kTrue;
  if (!IsDone(statement, 5870, [&] { EmplNumb = Line()["EMPL_NUMB"].Get(); })) return;
  if (EmplNumb.NumberOrZero() <= 0) {
    Cancel = 0;
    return;
  }
  bool sought = false, found = false, named = false, filled = false;
  statement(5872, [&] {
    PrmsRs.Seek("=", EmplNumb);
    sought = true;
  });
  if (!sought) return;
  statement(5876, [&] { found = !PrmsRs.NoMatch(); });
  // One blank stands for no name: the field of a line is never empty.
  statement(found ? 5878 : 5880, [&] {
    Line()["SORT_NAME"] = found ? PrmsRs["SORT_NAME"].Get() : Value(" ");
    named = true;
  });
  if (!named) return;
  statement(5882, [&] {
    BlankIfEmpty(Line()["SORT_NAME"]);
    filled = true;
  });
  if (filled) statement(5884, [] { Line().Update(); });
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

void TDBGrid1_BeforeColUpdate(int ColIndex, const Value& OldValue, std::int16_t& Cancel) {
  std::string field;
  statement(5866, [&] { field = TDBGrid1.Columns(ColIndex).DataField; });
  if (SameText(field, "ETIME")) {
    JoinDateAndTime();
    // The two columns show halves of one field. The grid would write the half that was typed over
    // the whole moment, so it writes nothing and the moment is written here.
    Cancel = kTrue;
  } else if (!TakesText(ColIndex, field, OldValue)) {
    Cancel = kTrue;
  } else if (SameText(field, "EMPL_NUMB")) {
    BringName(Cancel);
  }
}

void TDBGrid1_KeyPress(int& KeyAscii) {
  constexpr FailureTail keyStatement{ScannerModule, "TDBGrid1_KeyPress"};
  if (KeyAscii == key::kEscape && !TDBGrid1.Editing) {
    keyStatement(5895, [] { txtInput[kEmplBox].SetFocus(); });
    return;
  }
  if (!TDBGrid1.CanEdit()) return;
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
