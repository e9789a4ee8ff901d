#include "program/settings.h"

#include "entry/layouts.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/ini_keys.h"
#include "platform/desktop/desktop.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"

namespace ostrel {

namespace {

const std::string DefaultClockInPrefix = "Default Clock In=";
const std::string DefaultClockOutPrefix = "Default Clock Out=";

/// One of the two default clock times: where it is kept, shown and asked for.
struct ClockSetting {
  std::string& Time;
  MenuItem& Menu;
  const std::string& CaptionPrefix;
  const char* Key;
  const char* WhenMissing;
  const char* AskTitle;
  const char* AskPrompt;
  const char* Likely;  // what a time without am or pm most likely means
  const char* Unlikely;

  void ShowCaption() const { Menu.Caption = CaptionPrefix + Time; }
};

ClockSetting ClockInSetting() {
  return {DefaultClockIn, mnuDefaultClockIn,           DefaultClockInPrefix,     "Default Clock In",
          "8:00 am",      "Set Default Clock In Time", "Default Clock In Time?", " am",
          " pm"};
}

ClockSetting ClockOutSetting() {
  return {DefaultClockOut,
          mnuDefaultClockOut,
          DefaultClockOutPrefix,
          "Default Clock Out",
          "5:00 pm",
          "Set Default Clock Out Time",
          "Default Clock Out Time?",
          " pm",
          " am"};
}

const char* TrueOrFalse(bool value) { return value ? "True" : "False"; }

/// Two statements from `line` on. A value that is no time leaves what the conversion before it gave,
/// which `serial` carries from one setting to the next.
void ReadClockSetting(const FailureTail& statement, std::int32_t line, const ClockSetting& setting,
                      double& serial) {
  std::string text;
  statement(line, [&] { text = IniRead(kIniSection, setting.Key); });
  if (text.empty()) {
    setting.Time = setting.WhenMissing;
  } else {
    statement(line + 10, [&] { serial = TimeValue(text); });
    setting.Time = Format(serial, TimeFormat);
  }
  setting.ShowCaption();
}

/// The clock shows while the time of a line comes from it; a label in its place says so when it does
/// not. Nothing else shows that label, and each layout has its own place for the clock.
void ShowClock(bool shown) {
  constexpr int kTop = 360, kOverhang = 30;  // twips
  lblClockOff.Top = kTop;
  lblClockOff.Left = CurTimeCtl1.Left - kOverhang;
  CurTimeCtl1.Visible = shown;
  lblClockOff.Visible = !shown;
}

/// Three statements from `line` on.
void AskClockSetting(const FailureTail& statement, std::int32_t line, const ClockSetting& setting) {
  const std::string offered = setting.Menu.Caption.Get().substr(setting.CaptionPrefix.size());
  std::string answer;
  statement(line, [&] {
    // The empty line sets the question off from the title.
    answer = InputBox(std::string("\r") + setting.AskPrompt, setting.AskTitle, offered);
  });
  // A time alone has no days; a date with it is a slip of the hand. Cancel comes here as the empty
  // text.
  if (!IsDate(answer) || DateValue(answer) >= 1) return;
  if (!ContainsText(answer, "a") && !ContainsText(answer, "p")) {
    BoxAnswer likely = BoxAnswer::Yes;
    statement(line + 10, [&] {
      likely = MsgBox(answer + setting.Likely + "?", BoxButtons::YesNo, BoxIcon::Question,
                      "'am' or 'pm' not specified");
    });
    const std::string said =
        answer + (likely == BoxAnswer::Yes ? setting.Likely : setting.Unlikely);
    if (IsDate(said)) answer = said;  // 14:30 is the same time whatever is said
  }
  statement(line + 20, [&] { setting.Time = Format(TimeValue(answer), TimeFormat); });
  setting.ShowCaption();
}

}  // namespace

void GetIniParms() {
  constexpr FailureTail statement{ScannerModule, "GetIniParms"};
  double serial = 0;
  ReadClockSetting(statement, 1510, ClockInSetting(), serial);
  ReadClockSetting(statement, 1530, ClockOutSetting(), serial);

  std::string text;
  statement(1550, [&] { text = IniRead(kIniSection, "UseTimeClock"); });
  // The layout command inverts the check, so it is set to the opposite of what is wanted.
  if (!text.empty()) mnuUseTimeClock.Checked = text != "True";
  statement(1560, [] { mnuUseTimeClock_Click(); });

  text.clear();
  statement(1570, [&] { text = IniRead(kIniSection, "AutosetTime"); });
  if (!text.empty()) mnuAutosetTime.Checked = text == "True";
  ShowClock(mnuAutosetTime.Checked);

  text.clear();
  statement(1580, [&] { text = IniRead(kIniSection, "Comments"); });
  if (!text.empty()) txtComments.Text = text;
}

void PutIniParms() {
  constexpr FailureTail statement{ScannerModule, "PutIniParms"};
  // One value a statement: a setting that cannot be written does not keep the others from the disk.
  statement(5710, [] { IniWrite(kIniSection, "Default Clock In", DefaultClockIn); });
  statement(5720, [] { IniWrite(kIniSection, "Default Clock Out", DefaultClockOut); });
  statement(5730,
            [] { IniWrite(kIniSection, "UseTimeClock", TrueOrFalse(mnuUseTimeClock.Checked)); });
  statement(5740,
            [] { IniWrite(kIniSection, "AutosetTime", TrueOrFalse(mnuAutosetTime.Checked)); });
  statement(5750, [] { IniWrite(kIniSection, "Comments", txtComments.Text); });
}

void mnuDefaultClockIn_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuDefaultClockIn_Click"};
  AskClockSetting(statement, 2810, ClockInSetting());
}

void mnuDefaultClockOut_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuDefaultClockOut_Click"};
  AskClockSetting(statement, 2850, ClockOutSetting());
}

void mnuAutosetTime_Click() {
  mnuAutosetTime.Checked = !mnuAutosetTime.Checked;
  ShowClock(mnuAutosetTime.Checked);
}

}  // namespace ostrel
