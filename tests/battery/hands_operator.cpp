#include "battery/hands_operator.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "platform/forms/form.h"
#include "platform/values/clock.h"
#include "platform/values/failure.h"
#include "scan_main/scan_main.h"

namespace ostrel {

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
    answer = luck < 4 && retries_ < 6 && MayRetry() ? BoxAnswer::Retry
             : luck == 9                            ? BoxAnswer::Abort
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

// ---- The operator

double LeadingNumber(const std::string& text) {
  std::string digits = text;
  std::erase_if(digits, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
  const std::size_t first = digits.find_first_of("0123456789");
  const bool begins = first != digits.npos && digits.find_first_not_of("+-.") == first;
  const bool hex = begins && digits[first] == '0' && digits.substr(first + 1).starts_with('x');
  return begins && !hex ? std::strtod(digits.c_str(), nullptr) : 0;
}

int FieldInGrid(int column) {
  static const int kFields[] = {kEmplField,      kQuantityField, kHoursField,     kNameField,
                                kTimeField,      kTimeField,     kTypeField,      kQuanDescField,
                                kRateField,      kGrossField,    kHourGrossField, kEnterpriseField,
                                kOperationField, kEquipField,    kMemoField};
  return kFields[column];
}

Operator::Operator() {
  Laptop.WriteIni("UseTimeClock=True\r\nAutosetTime=True\r\n");
  Desktop.MayRetry = [this] { return !Probe.HasFailedBehind(); };
}

bool Operator::Starts() {
  const bool runs = Runs([this] { Laptop.Start(); });
  if (runs && OnStarted) OnStarted();
  return runs;
}

RawLines Operator::Lines() const {
  return OutsideStore(Laptop.App("Prin1234.mdb")).Read().value_or(RawLines());
}

void Operator::BeginStep(unsigned luck, bool rude) {
  luck_ = Harm(luck);
  Desktop.Luck = Harm(luck + 1);
  Desktop.Reports.clear();
  Named = {};
  Rude = rude;
  Commanded = Harmed = Meddled = false;
  if (TDBGrid1.Editing) ClaimCell();
}

bool Operator::Runs(const std::function<void()>& event) {
  try {
    ScanMain.Raise(event);
    Laptop.Desktop.RunPosted();
  } catch (const ProgramEnded&) {
    return false;
  }
  return ScanMain.Visible;
}

int Operator::Day() const {
  using std::chrono::year, std::chrono::month, std::chrono::day, std::chrono::sys_days;
  unsigned inYear = 0, inMonth = 0;
  int ofYear = 2004;  // where it is left out
  if (std::sscanf(txtToday.Text.Get().c_str(), "%u/%u/%d", &inYear, &inMonth, &ofYear) < 2)
    return 0;
  if (ofYear < 100) ofYear += ofYear < 24 ? 2000 : 1900;
  const std::chrono::year_month_day date{year(ofYear), month(inYear), day(inMonth)};
  if (!date.ok()) return 0;
  return static_cast<int>((sys_days(date) - sys_days(year(1899) / 12 / 30)).count());
}

int Operator::DayOfNewLine() const { return Day() != 0 ? Day() : static_cast<int>(Now().Days); }

void Claim::Add(const Claim& other) {
  for (const auto& [row, fields] : other.Cells) Cells[row].insert(fields.begin(), fields.end());
  Goes.insert(other.Goes.begin(), other.Goes.end());
  NewEmployees.insert(other.NewEmployees.begin(), other.NewEmployees.end());
  NewDays.insert(other.NewDays.begin(), other.NewDays.end());
  HourDays.insert(other.HourDays.begin(), other.HourDays.end());
  NewTypes += other.NewTypes;
  NewLines += other.NewLines;
}

void Operator::ClaimCell() {
  if (!Data1.Recordset || Data1.Recordset.Position() < 0 || TDBGrid1.Col < 0) return;
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
  const double employee = std::nearbyint(LeadingNumber(txtInput[kEmplBox].Text));
  const bool isOne = employee >= 1 && employee <= 99999;
  // A number that is nobody's is refused, but not the clock-in that was agreed to for it.
  const int known = std::abs(employee) < 1e9 ? static_cast<int>(employee) : 0;
  ClaimNew({known}, timeClock ? "IOP" : "X", timeClock ? 2 : 1);
  Named.TypedByClock = timeClock && mnuAutosetTime.Checked && isOne;
  Named.WithoutPieces = timeClock;
}

void Operator::Choose(MenuItem& item) {
  if (!item.Visible || !item.Enabled) return;
  Commanded = &item != &mnuCut && &item != &mnuCopy && &item != &mnuPaste;
  Laptop.Choose(item);
}

void Operator::Put(const std::string& text) {
  if (!Rude) return Type(text);
  Note("pastes " + text);
  auto* box = dynamic_cast<TextBox*>(ScanMain.ActiveControl());
  if (box != nullptr) box->Typed("", 0, 0);
  if (box == nullptr && TDBGrid1.CanEdit()) {
    ClaimCell();
    TDBGrid1.BeginEdit("");
  }
  Desktop.SetClipboardText(text);
  ScanMain.Raise(mnuPaste.Click);
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
