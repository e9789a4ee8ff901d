#include "battery/hands_acts.h"

#include <cmath>
#include <map>
#include <random>
#include <set>

#include "platform/database/recordset.h"
#include "platform/forms/control.h"
#include "platform/values/clock.h"
#include "scan_main/scan_main.h"
#include "support/outside_store.h"

namespace ostrel {

namespace {

struct Act {
  const char* Name;
  std::size_t Weight;
  void (*Run)(Operator&);
};

constexpr const char* kEmployees[] = {"101", "125", "130", "140", "150", "101", "130", "777", "0"};

std::string EmployeeOf(Operator& hands) { return kEmployees[hands.Below(std::size(kEmployees))]; }

// Texts that would do harm if anything took them for more than texts.
constexpr const char* kRudeTexts =
    "x'; DROP TABLE OstrelPr; --|1; DELETE FROM OstrelPr|1 OR 1=1|1) or (1=1|]; DROP TABLE "
    "[OstrelPr|#11/18/04#|#|#2 or 1=1|%s%n%x|\"|'|a,b|\xE2\x80\xAE 130|\xF0\x9F\x98\x80|Łódź "
    "中文|-1e309|1e308|99999999999999999999|0x10|nan|#NULL#|\r\n[Ostrel Remote]\r\n|12:99|13/45/0";

std::string RudeText(Operator& hands) {
  if (hands.Coin()) return hands.OneOf(Split(kRudeTexts));
  Harm letters(static_cast<unsigned>(hands.Below(1000)));
  return letters.Letters(1 + hands.Below(60));
}

/// A text that a box, or a column over it, may be given.
std::string TextFor(Operator& hands, int field) {
  static const std::map<int, std::vector<std::string>> kTexts = {
      {kEmplField, {"130", "101", "125", "777", "0", "101X", "abc", ""}},
      {kQuantityField, {"12", "0", "100.5", "-3", "7x", "abc", ""}},
      {kTimeField, {"8:15 am", "7.3", "1 pm", "abc", "13:45", ""}},
      {kStopField, {"11/18", "11/17", "13/45", "abc", ""}},  // the column of the date
      {kQuanDescField, {"BOX", "lbs", "HRS", ""}},
      {kRateField, {"0.5", "6.75", "0", "12", "abc", ""}},
      {kTypeField, {"I", "O", "P"}},
      {kMemoField, {"a note", "", "x"}}};
  if (hands.Rude && hands.Below(3) == 0) return RudeText(hands);
  const auto texts = kTexts.find(field);
  if (texts != kTexts.end()) return hands.OneOf(texts->second);
  return hands.OneOf<std::string>({"1", "12", "0", "7.5", "abc", ""});
}

int FieldOfBox(int box) {
  static const int kFields[] = {kEmplField,      kQuantityField, kTimeField,
                                kQuanDescField,  kRateField,     kEnterpriseField,
                                kOperationField, kEquipField,    kMemoField};
  return kFields[box];
}

void TypeAndSave(Operator& hands) {
  txtInput[kEmplBox].SetFocus();
  hands.Type(EmployeeOf(hands));
  for (int keys = 0; keys < 4 && ScanMain.ActiveControl() != &cmdSave; ++keys) hands.Type("\r");
  if (ScanMain.ActiveControl() == &cmdSave) hands.Type("\r");
}

void ClickSave(Operator& hands) {
  hands.ClaimSave();
  cmdSave.Press();
}

void ClickOnceMore(Operator& hands) {
  ClickSave(hands);
  ClickSave(hands);
}

void TypeInBox(Operator& hands) {
  const auto box = hands.Below(kInputBoxCount);
  if (!txtInput[box].CanTakeFocus()) return;
  txtInput[box].SetFocus();
  hands.Put(TextFor(hands, FieldOfBox(static_cast<int>(box))));
  if (hands.Coin()) hands.Type("\r");
}

void SomeKeys(Operator& hands) {
  for (std::size_t keys = 1 + hands.Below(4); keys > 0; --keys) {
    static const std::string kKeys =
        "\r\r\t<>\x1b\b"
        "s1x 8";
    hands.Type(kKeys.substr(hands.Below(kKeys.size()), 1));
  }
}

void PressOption(Operator& hands) { Option1[hands.Below(kEventKindCount)].Press(); }

void TypeDate(Operator& hands) {
  txtToday.SetFocus();
  hands.Type(
      hands.OneOf<std::string>({"11/18/04", "11/17/04", "11/17", "11/19/04", "abc", "11/1"}));
  if (hands.Rude) hands.Put(RudeText(hands));
  if (hands.Below(3) > 0) hands.Type("\r");
}

void TypeComment(Operator& hands) {
  txtComments.SetFocus();
  hands.Type(hands.OneOf<std::string>({"Crew#2", "Crew#1 north", "none"}));
  if (hands.Rude) hands.Put(RudeText(hands));
  if (hands.Coin()) hands.Type("\r");
}

/// Makes a cell current and gives the grid the focus, as a click in it does.
bool ClickCell(Operator& hands) {
  std::vector<int> columns;
  for (int column = 0; column < TDBGrid1.ColumnCount(); ++column) {
    if (TDBGrid1.Columns(column).Visible) columns.push_back(column);
  }
  TDBGrid1.Press();
  if (ScanMain.ActiveControl() != &TDBGrid1 || !Data1.Recordset) return false;
  if (Data1.Recordset.RowCount() == 0)
    return false;  // leaving another control has changed the view
  TDBGrid1.GoTo(hands.Below(Data1.Recordset.RowCount()), hands.OneOf(columns));
  hands.Note("at row " + std::to_string(Data1.Recordset.Position()) + ", " +
             TDBGrid1.Columns(TDBGrid1.Col).Caption);
  return TDBGrid1.CanEdit();
}

/// Typed into a cell, and left there or not.
void EditCell(Operator& hands) {
  if (!ClickCell(hands)) return;
  const bool isDate = TDBGrid1.Columns(TDBGrid1.Col).Caption == "Date";
  const std::string text = TextFor(hands, isDate ? kStopField : FieldInGrid(TDBGrid1.Col));
  hands.Put(text.empty() && !hands.Rude ? "\b" : text);
  if (hands.Below(3) > 0) hands.Type("\r");
}

void Select(Operator& hands) {
  if (!ClickCell(hands) || Data1.Recordset.RowCount() == 0) return;
  for (std::size_t more = 1 + hands.Below(2); more > 0; --more) {
    TDBGrid1.ToggleSelected(hands.Below(Data1.Recordset.RowCount()));
  }
}

void Delete(Operator& hands) {
  for (const Bookmark row : TDBGrid1.SelBookmarks) hands.Named.Goes.insert(row);
  hands.Choose(mnuDeleteLine);
}

void ClockInACrew(Operator& hands) {
  const std::set<int> ofAnyCrew = {101, 125, 130, 140};
  hands.ClaimNew(ofAnyCrew, mnuUseTimeClock.Checked ? "I" : "X", 3);
  hands.Named.WithoutPieces = mnuUseTimeClock.Checked;
  hands.Choose(mnuClockInACrew);
}

std::set<int> ClockedIn(const Operator& hands) {
  std::set<int> employees;
  for (const auto& [id, line] : hands.Lines()) {
    if (line.Day() == hands.Day() && line.Text(kTypeField) == "I")
      employees.insert(line.Employee());
  }
  // A cell that is half typed is settled first, and may make its line one of these.
  if (TDBGrid1.Editing) employees.insert(static_cast<int>(LeadingNumber(TDBGrid1.CellText(0))));
  return employees;
}

void ClockOutAll(Operator& hands) {
  const std::set<int> employees = ClockedIn(hands);
  hands.ClaimNew(employees, "O", employees.size());
  hands.Choose(mnuClockoutAllEmpls);
}

void ClockInAgain(Operator& hands) {
  const std::set<int> employees = ClockedIn(hands);
  hands.ClaimNew(employees, "I", employees.size());
  hands.Choose(mnuReClockInAllEmpls);
}

template <MenuItem& item>
void WorkOutHours(Operator& hands) {
  if (mnuUseTimeClock.Checked) hands.Named.HourDays = {hands.Day()};
  hands.Choose(item);
}

template <MenuItem& item>
void Command(Operator& hands) {
  hands.Choose(item);
}

void PassTime(Operator& hands) {
  hands.Laptop.Desktop.PassSeconds(static_cast<double>(60 * hands.Below(240)) + 0.7);
  const Moment now = Now();
  // Never beyond the day: a run that passes midnight is another matter.
  if (now.Days - std::floor(now.Days) < 0.4 || hands.Below(12) == 0) {
    hands.Laptop.SetClock("11/18/04 11:59:59 pm");
    hands.Laptop.Desktop.PassSeconds(0.7);
  }
  if (std::floor(Now().Days) != 38309 || hands.Below(4) == 0) {
    hands.Laptop.SetClock("11/18/04 7:00 am");
  }
}

/// Another window at the same store deletes the newest line and enters one.
void AnotherWindow(Operator& hands) {
  hands.Meddled = true;
  OutsideStore(hands.Laptop.App("Prin1234.mdb"))
      .Do("DELETE FROM OstrelPr WHERE rowid = (SELECT max(rowid) FROM OstrelPr);"
          "INSERT INTO OstrelPr(EMPL_NUMB, SORT_NAME, ETIME, EVENT_TYPE, QUANTITY, RATE, GROSS) "
          "VALUES(150, ' ', 38309.25, 'I', 0, 0, 0)");
}

void OpenAgain(Operator& hands) {
  hands.Laptop.Stop();
  hands.Starts();
}

const Act kActs[] = {
    {"save by keys", 16, TypeAndSave},
    {"click Save", 5, ClickSave},
    {"click Save twice", 1, ClickOnceMore},
    {"type in a box", 9, TypeInBox},
    {"some keys", 6, SomeKeys},
    {"event button", 9, PressOption},
    {"standard rate", 2, [](Operator&) { chkStdRate.Press(); }},
    {"type a date", 6, TypeDate},
    {"type a comment", 1, TypeComment},
    {"edit a cell", 11, EditCell},
    {"click a cell", 3, [](Operator& hands) { ClickCell(hands); }},
    {"select", 4, Select},
    {"delete", 4, Delete},
    {"crew", 3, ClockInACrew},
    {"clock out", 3, ClockOutAll},
    {"clock in again", 3, ClockInAgain},
    {"watch", 4, WorkOutHours<mnuMinWageWatch>},
    {"import", 6, WorkOutHours<mnuWriteImportFile>},
    {"employee only", 3, Command<mnuDisplayCurrentEmpl>},
    {"employee order", 3, Command<mnuEmplOrder>},
    {"all dates", 3, Command<mnuDisplayAllDates>},
    {"layout", 4, Command<mnuUseTimeClock>},
    {"autoset", 2, Command<mnuAutosetTime>},
    {"default in", 1, Command<mnuDefaultClockIn>},
    {"default out", 1, Command<mnuDefaultClockOut>},
    {"copy", 1, Command<mnuCopy>},
    {"cut", 1, Command<mnuCut>},
    {"paste", 1, Command<mnuPaste>},
    {"jump", 2, Command<mnuJumpQDesc>},
    {"print", 1, Command<mnuPrintLines>},
    {"daily report", 1, Command<mnuEmplDailyRpt>},
    {"time passes", 5, PassTime},
    {"another window", 2, AnotherWindow},
    {"open again", 1, OpenAgain},
};

}  // namespace

Hand DrawHand(unsigned seed, std::size_t steps) {
  std::mt19937 random(seed);
  std::vector<std::size_t> urn;
  for (std::size_t act = 0; act < std::size(kActs); ++act)
    urn.insert(urn.end(), kActs[act].Weight, act);
  Hand hand(steps);
  for (Step& step : hand) {
    step.Act = urn[random() % urn.size()];
    step.Luck = static_cast<unsigned>(random());
    const std::size_t harm = random() % 100;
    if (harm < 10) {
      step.Harm = harm < 6 ? HarmKind::Statement : harm == 9 ? HarmKind::FullDisk : HarmKind::Lock;
    }
    // Where the program only starts, harm is the business of other tests.
    if (kActs[step.Act].Run == OpenAgain) step.Harm = HarmKind::None;
    step.Rude = seed % 5 == 4;
  }
  return hand;
}

std::string NameOf(const Step& step) {
  static const char* const kHarms[] = {"", ", a statement fails", ", locked", ", disk full"};
  return std::string(kActs[step.Act].Name) + kHarms[static_cast<int>(step.Harm)];
}

bool Carry(Operator& hands, const Step& step) {
  hands.BeginStep(step.Luck, step.Rude);
  const StepHarm harm(step.Harm, step.Luck + 2, hands.StorePath(), hands.Probe,
                      hands.Desktop.OnReport, hands.Harmed);
  return hands.Runs([&] { kActs[step.Act].Run(hands); });
}

}  // namespace ostrel
