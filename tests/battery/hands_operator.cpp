#include "battery/hands_operator.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/failure.h"
#include "scan_main/scan_main.h"
#include "support/full_disk.h"

namespace ostrel {

namespace {

const std::map<int, std::set<int>> kCrews = {{1, {140}}, {2, {101, 125, 130}}};

// ---- Harm

/// Harm for the length of a step, or until some reports have come.
class StepHarm {
 public:
  StepHarm(const Step& step, const std::string& store, LuckyDesktop& desktop, LuckyProbe& probe,
           bool& struck)
      : desktop_(desktop), probe_(probe) {
    Harm luck(step.Luck + 2);
    reports_ = luck.Below(6);
    desktop.OnReport = [this, &struck] {
      struck = true;
      if (reports_-- == 0) LetGo();
    };
    if (step.Harm == Step::Kind::Statement) probe.Arm(luck);
    if (step.Harm == Step::Kind::Lock) {
      static const char* const kStages[] = {"BEGIN; SELECT count(*) FROM OstrelPr",
                                            "BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"};
      lock_ = std::make_unique<OutsideStore>(store);
      lock_->Do(kStages[luck.Below(3)]);
      struck = true;
    }
    if (step.Harm == Step::Kind::FullDisk) {
      full_ = std::make_unique<FullDisk>(std::filesystem::file_size(store));
      struck = true;
    }
  }
  ~StepHarm() {
    LetGo();
    probe_.Disarm();
    desktop_.OnReport = {};
  }
  StepHarm(const StepHarm&) = delete;
  StepHarm& operator=(const StepHarm&) = delete;

 private:
  void LetGo() {
    lock_.reset();
    full_.reset();
  }
  LuckyDesktop& desktop_;
  std::size_t reports_ = 0;
  LuckyProbe& probe_;
  std::unique_ptr<OutsideStore> lock_;
  std::unique_ptr<FullDisk> full_;
};

// ---- What hands do

struct Act {
  const char* Name;
  std::size_t Weight;
  void (*Run)(Operator&);
};

constexpr const char* kEmployees[] = {"101", "125", "130", "140", "150", "101", "130", "777", "0"};

std::string EmployeeOf(Operator& hands) { return kEmployees[hands.Below(std::size(kEmployees))]; }

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
  hands.Type(TextFor(hands, FieldOfBox(static_cast<int>(box))));
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
  if (hands.Below(3) > 0) hands.Type("\r");
}

void TypeComment(Operator& hands) {
  txtComments.SetFocus();
  hands.Type(hands.OneOf<std::string>({"Crew#2", "Crew#1 north", "none"}));
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
  const std::string text =
      TextFor(hands, isDate ? kStopField : Operator::FieldInGrid(TDBGrid1.Col));
  hands.Type(text.empty() ? "\b" : text);
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
  std::set<int> all;
  for (const auto& [crew, members] : kCrews) all.insert(members.begin(), members.end());
  hands.ClaimNew(all, mnuUseTimeClock.Checked ? "I" : "X", 3);
  hands.Named.WithoutPieces = mnuUseTimeClock.Checked;
  hands.Choose(mnuClockInACrew);
}

std::set<int> ClockedIn(const Operator& hands) {
  std::set<int> employees;
  for (const auto& [id, line] : hands.Lines()) {
    if (line.Day() == hands.Day() && line.Text(kTypeField) == "I")
      employees.insert(line.Employee());
  }
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
  hands.Named.HoursOfDay = mnuUseTimeClock.Checked;
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
  hands.Start();
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

/// The number that a text begins with, as far as hands type any.
int LeadingNumber(const std::string& text) {
  return static_cast<int>(std::lround(std::strtod(text.c_str(), nullptr)));
}

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
    if (harm < 6) step.Harm = Step::Kind::Statement;
    if (harm >= 6 && harm < 9) step.Harm = Step::Kind::Lock;
    if (harm == 9) step.Harm = Step::Kind::FullDisk;
  }
  return hand;
}

std::string Operator::NameOf(const Step& step) {
  static const char* const kHarms[] = {"", ", a statement fails", ", locked", ", disk full"};
  return std::string(kActs[step.Act].Name) + kHarms[static_cast<int>(step.Harm)];
}

// ---- Boxes

BoxAnswer LuckyDesktop::ShowMessageBox(const MessageBoxRequest& request) {
  const bool report = request.Buttons == BoxButtons::AbortRetryIgnore;
  BoxAnswer answer = BoxAnswer::Ok;
  const std::size_t luck = Luck.Below(10);
  if (report) {
    Reports.push_back(request.Text);
    if (OnReport) OnReport();
    retries_ = asked_ == request.Text ? retries_ + 1 : 0;
    asked_ = request.Text;
    answer = luck < 4 && retries_ < 6 ? BoxAnswer::Retry
             : luck == 9              ? BoxAnswer::Abort
                                      : BoxAnswer::Ignore;
  } else if (request.Buttons == BoxButtons::OkCancel) {
    answer = luck < 8 ? BoxAnswer::Ok : BoxAnswer::Cancel;
  } else if (request.Buttons != BoxButtons::Ok) {
    answer = luck < 6 ? BoxAnswer::Yes : BoxAnswer::No;
    if (request.Buttons == BoxButtons::YesNoCancel && luck == 9) answer = BoxAnswer::Cancel;
  }
  Shown.push_back("  [" + request.Text + "] -> " + std::to_string(static_cast<int>(answer)));
  if (!report && OnMessage) OnMessage(request.Text);
  return answer;
}

std::string LuckyDesktop::ShowInputBox(const std::string& prompt, const std::string& /*title*/,
                                       const std::string& offered) {
  static const char* const kTyped[] = {"2", "1", "9", "8:15 am", "+15", "-30", "14:30", "x", ""};
  const std::size_t luck = Luck.Below(2 * std::size(kTyped));
  LastTyped = luck < std::size(kTyped) ? kTyped[luck] : offered;
  // A description takes five characters; the store refuses more, and says so.
  if (prompt.find("Description") != prompt.npos && !LastTyped.empty()) LastTyped = "BOX";
  Shown.push_back("  [" + prompt + "] -> '" + LastTyped + "'");
  return LastTyped;
}

// ---- Statements

void LuckyProbe::Arm(Harm& luck) {
  toCome_ = luck.Below(60);
  times_ = 1 + luck.Below(3);
  behind_ = luck.Coin();
  site_ = 0;
}

void LuckyProbe::Before(const StatementSite& site) {
  if (OnReach) OnReach(site);
  if (times_ > 0 && site_ == 0 && toCome_-- == 0) site_ = site.Line;
  if (!behind_) FailAt(site);
}

void LuckyProbe::After(const StatementSite& site) {
  if (OnDone) OnDone(site);
  if (behind_) FailAt(site);
}

void LuckyProbe::FailAt(const StatementSite& site) {
  if (times_ == 0 || site.Line != site_) return;
  --times_;
  struck_ = true;
  throw Failure(3051, "Planted.");
}

// ---- The operator

int Operator::FieldInGrid(int column) {
  static const int kFields[] = {kEmplField,      kQuantityField, kHoursField,     kNameField,
                                kTimeField,      kTimeField,     kTypeField,      kQuanDescField,
                                kRateField,      kGrossField,    kHourGrossField, kEnterpriseField,
                                kOperationField, kEquipField,    kMemoField};
  return kFields[column];
}

Operator::Operator() { Laptop.WriteIni("UseTimeClock=True\r\nAutosetTime=True\r\n"); }

void Operator::Start() {
  Laptop.Start();
  if (OnStarted) OnStarted();
}

RawLines Operator::Lines() const {
  return OutsideStore(Laptop.App("Prin1234.mdb")).Read().value_or(RawLines());
}

bool Operator::Carry(const Step& step) {
  luck_ = Harm(step.Luck);
  Desktop.Luck = Harm(step.Luck + 1);
  Desktop.Reports.clear();
  Named = {};
  Commanded = Harmed = Meddled = false;
  if (TDBGrid1.Editing) ClaimCell();
  try {
    // Nothing is planted where the program starts, or where it only stands by.
    const bool restart = kActs[step.Act].Run == OpenAgain;
    Step mild = step;
    if (restart) mild.Harm = Step::Kind::None;
    const StepHarm harm(mild, Laptop.App("Prin1234.mdb"), Desktop, Probe, Harmed);
    ScanMain.Raise([&] { kActs[step.Act].Run(*this); });
    Laptop.Desktop.RunPosted();
  } catch (const ProgramEnded&) {
    return false;
  }
  return ScanMain.Visible;
}

int Operator::Day() const {
  int month = 0, day = 0;
  const int parts = std::sscanf(txtToday.Text.Get().c_str(), "%d/%d", &month, &day);
  if (parts != 2 || month < 1 || month > 12 || day < 1 || day > 31) return 0;
  return 38309 + (month - 11) * 30 + day - 18;  // hands type days of November alone
}

int Operator::DayOfNewLine() const { return Day() != 0 ? Day() : static_cast<int>(Now().Days); }

void Operator::ClaimCell() {
  if (Data1.Recordset.Position() < 0 || TDBGrid1.Col < 0) return;
  auto& cells = Named.Cells[Data1.Recordset.GetBookmark()];
  cells.insert(FieldInGrid(TDBGrid1.Col));
  if (TDBGrid1.Col == 0) cells.insert(kNameField);
}

void Operator::ClaimNew(const std::set<int>& employees, const char* types, std::size_t lines) {
  Named.NewEmployees.insert(employees.begin(), employees.end());
  Named.NewDays.insert(DayOfNewLine());
  Named.NewTypes += types;
  Named.NewLines += lines;
}

void Operator::ClaimSave() {
  const bool timeClock = mnuUseTimeClock.Checked;
  ClaimNew({LeadingNumber(txtInput[kEmplBox].Text)}, timeClock ? "IOP" : "X", timeClock ? 2 : 1);
  Named.TypedByClock = timeClock && mnuAutosetTime.Checked && !Named.NewEmployees.contains(0);
  Named.WithoutPieces = timeClock;
}

void Operator::Choose(MenuItem& item) {
  if (!item.Visible || !item.Enabled) return;
  Commanded = &item != &mnuCut && &item != &mnuCopy && &item != &mnuPaste;
  Laptop.Choose(item);
}

void Operator::Type(std::string_view keys) {
  std::string shown;
  for (const char c : keys)
    shown += c == '\r'     ? "Enter"
             : c == '\t'   ? "Tab"
             : c == '\x1b' ? "Esc"
             : c == '\b'   ? "Back"
                           : std::string(1, c);
  Note("keys " + shown);
  for (const char c : keys) {
    if (c == '<' || c == '>') {
      Press(c == '<' ? key::kLeft : key::kRight);
    } else {
      Press(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c, c == '\t' ? 0 : c);
    }
    Laptop.Desktop.RunPosted();
  }
}

void Operator::Press(int keyCode, int character) {
  auto* control = dynamic_cast<KeyControl*>(ScanMain.ActiveControl());
  if (control == nullptr) {
    if (ScanMain.ActiveControl() != nullptr && character == ' ') ScanMain.ActiveControl()->Press();
    if (keyCode == key::kTab) ScanMain.FocusNext(Direction::Forward);
    return;
  }
  if (keyCode == key::kTab) return ScanMain.FocusNext(Direction::Forward);
  auto* box = dynamic_cast<TextBox*>(control);
  if (control == &TDBGrid1 && TDBGrid1.Editing && character == key::kEnter) {
    return TDBGrid1.CommitEdit();
  }
  const auto hasFocus = [&] { return ScanMain.ActiveControl() == control; };
  if (control->KeyDown) ScanMain.Raise([&] { control->KeyDown(keyCode, 0); });
  if (!hasFocus() || character == 0) return;
  if (control == &TDBGrid1) ClaimCell();
  if (control->KeyPress) ScanMain.Raise([&] { control->KeyPress(character); });
  if (character == 0 || !hasFocus()) return;
  if (box != nullptr) PressInBox(*box, keyCode, character);
  if (control == &TDBGrid1) PressInGrid(keyCode, character);
  if (control == &cmdSave && (character == key::kEnter || character == ' ')) {
    ClaimSave();
    cmdSave.Press();
  }
}

void Operator::PressInBox(TextBox& box, int /*keyCode*/, int character) {
  if (character == key::kEscape) return;
  std::string text = box.Text;
  const auto caret = std::min(static_cast<std::size_t>(box.SelStart.Get()), text.size());
  text.erase(caret, static_cast<std::size_t>(box.SelLength.Get()));
  if (character == '\b') {
    if (caret > 0) text.erase(caret - 1, 1);
    return box.Typed(text, caret > 0 ? static_cast<int>(caret) - 1 : 0, 0);
  }
  text.insert(caret, 1, static_cast<char>(character));
  box.Typed(text, static_cast<int>(caret) + 1, 0);
}

void Operator::PressInGrid(int /*keyCode*/, int character) {
  if (TDBGrid1.Editing) {
    if (character == key::kEscape) return TDBGrid1.CancelEdit();
    std::string text = TDBGrid1.EditText;
    if (character == '\b' && !text.empty()) text.pop_back();
    if (character >= ' ') text += static_cast<char>(character);
    TDBGrid1.Typed(text, static_cast<int>(text.size()), 0);
  } else if (TDBGrid1.CanEdit() && (character >= ' ' || character == '\b')) {
    TDBGrid1.BeginEdit(character == '\b' ? "" : std::string(1, static_cast<char>(character)));
  }
}

}  // namespace ostrel
