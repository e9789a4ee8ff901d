#include "entry/save_command.h"

#include <cstdint>
#include <string>

#include "display/totals.h"
#include "entry/auto_clock_in.h"
#include "entry/write_line.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "hours/time_question.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "cmdSave_Click"};

// The last pieces with a price, counted in either layout, are what the next ones most likely are.
constexpr const char* kLastPieces = "QUANTITY>0 and RATE>0";

void GoHome(std::int32_t line) {
  statement(line, [] { txtInput[kEmplBox].SetFocus(); });
}

/// The rate of a line with a quantity, asked for where none is set.
///   returns  whether the save goes on
bool RateIsSettled() {
  double rate = 0;
  statement(324, [&] { rate = NumericPrefix(txtInput[kRateBox].Text); });
  if (rate != 0) return true;
  Beep();
  double suggestion = 0;
  statement(330,
            [&] { suggestion = DomainFunc("Prin App", "RATE", kLastPieces, "LAST").ToDouble(); });
  if (suggestion <= 0) suggestion = 1;
  std::string answer;
  statement(340, [&] {
    answer = InputBox("\rPiecework Rate?", "Piecework Rate not set", Format(suggestion, "#0.00"));
  });
  if (answer.empty()) return false;
  // Clearing the switch loads both boxes from the last line; the answer goes on top of that.
  statement(350, [] { chkStdRate.Value = 0; });
  txtInput[kRateBox].Text = answer;
  return true;
}

bool DescribesPieces(const std::string& description) {
  const std::string word = UpperCase(Trim(description));
  return !word.empty() && word != "HRS";
}

/// The description of a piecework quantity, asked for where there is none or it says hours.
///   returns  whether the save goes on
bool DescriptionIsSettled() {
  if (DescribesPieces(txtInput[kQuanDescBox].Text)) return true;
  Beep();
  std::string suggestion;
  statement(
      380, [&] { suggestion = DomainFunc("Prin App", "QUAN_DESC", kLastPieces, "LAST").ToText(); });
  if (suggestion == "0" || !DescribesPieces(suggestion)) suggestion = "PCE";
  std::string answer;
  statement(390, [&] {
    answer =
        InputBox("\rPiecework Quantity Description?", "Quantity Description not set", suggestion);
  });
  if (answer.empty()) return false;
  txtInput[kQuanDescBox].Text = UpperCase(answer);
  return true;
}

std::int32_t ClockInsOfDay() {
  const std::string where =
      WhereWorkDay() + " and EMPL_NUMB = " + txtInput[kEmplBox].Text.Get() + " and EVENT_TYPE='I';";
  std::int32_t count = 0;
  statement(430, [&] { count = DomainFunc("Prin App", "EVENT_TYPE", where, "Count").ToLong(); });
  return count;
}

/// An employee without a clock-in on the day is offered one.
///   AutoClockInVal  out: its time, left alone where none is wanted
///   returns         whether the save goes on
bool ClockInIsSettled(std::string& AutoClockInVal) {
  const bool asks = mnuUseTimeClock.Checked && !Option1[kClockIn].Value && HasWorkDay();
  if (!asks || ClockInsOfDay() != 0) return true;
  Beep();
  std::string TimeOut;
  std::int16_t ReturnVal = 0;
  statement(450, [&] {
    AskTime("Clock in Empl# " + Trim(txtInput[kEmplBox].Text), DefaultClockIn,
            "Employee not clocked in", TimeOut, ReturnVal);
  });
  if (ReturnVal == kTimeCancelled) return false;
  AutoClockInVal = TimeOut;
  return true;
}

}  // namespace

void cmdSave_Click() {
  double quantity = 0;
  statement(310, [&] { quantity = NumericPrefix(txtInput[kQuantityBox].Text); });
  if (quantity != 0) {
    if (mnuUseTimeClock.Checked) statement(320, [] { Option1[kPiecework].Value = true; });
    if (!RateIsSettled()) return GoHome(360);
    if (Option1[kPiecework].Value && !DescriptionIsSettled()) return GoHome(400);
  }
  const std::string noClockIn = "-1";
  std::string AutoClockInVal = noClockIn;
  if (!ClockInIsSettled(AutoClockInVal)) return GoHome(460);

  statement(480, [] { WriteValues(); });
  if (AutoClockInVal != noClockIn) statement(490, [&] { AutoClockIn(AutoClockInVal); });
  statement(500, [] { Data1.Refresh(); });
  statement(510, [] { DisplayTotals(); });
  statement(520, [] { DoEvents(); });
  GoHome(530);
}

void cmdSave_GotFocus() {
  Shape1.Visible = true;
  if (mnuUseTimeClock.Checked && mnuAutosetTime.Checked)
    txtInput[kTimeBox].Text = Format(Now(), TimeFormat);
}

void cmdSave_LostFocus() { Shape1.Visible = false; }

void cmdSave_KeyPress(int& KeyAscii) {
  constexpr FailureTail edge{ScannerModule, "cmdSave_KeyPress"};
  if (KeyAscii == key::kEscape) edge(610, [] { txtInput[kQuanDescBox].SetFocus(); });
}

}  // namespace ostrel
