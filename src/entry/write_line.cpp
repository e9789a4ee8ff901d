#include "entry/write_line.h"

#include <cstdint>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/standard_rate.h"
#include "hours/typed_time.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"
#include "store/employee_names.h"
#include "store/timecard_store.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "WriteValues"};
constexpr std::int32_t kLowestEmplNumb = 1, kHighestEmplNumb = 99999;

const std::string& BoxText(InputBoxIndex index) { return txtInput[index].Text; }

double NumberIn(InputBoxIndex index) { return NumericPrefix(BoxText(index)); }

/// The date box's day, or today where it holds none.
std::string DayOfLine() { return HasWorkDay() ? WorkDay() : Format(Now(), DateFormat); }

/// Day of the box with the time of the clock, to the minute; this very second where the box holds no
/// day.
void SetClockTime(std::int32_t line) {
  if (HasWorkDay()) {
    statement(line, [] { LinesRs["ETIME"] = OnWorkDay(Format(Now(), TimeFormat)); });
  } else {
    statement(line + 1, [] { LinesRs["ETIME"] = Now(); });
  }
}

const char* EventTypeOfButtons() {
  if (Option1[kClockIn].Value) return "I";
  return Option1[kClockOut].Value ? "O" : "P";
}

void SetTimeClockFields() {
  if (mnuAutosetTime.Checked) {
    txtInput[kTimeBox].Text = Format(Now(), TimeFormat);
    SetClockTime(6580);
  } else {
    statement(6590, [] { txtInput[kTimeBox].Text = AppendAmPm(BoxText(kTimeBox)); });
    statement(6600, [] { LinesRs["ETIME"] = DayOfLine() + " " + BoxText(kTimeBox); });
  }
  statement(6610, [] { LinesRs["EVENT_TYPE"] = EventTypeOfButtons(); });
}

void SetPlainFields() {
  SetClockTime(6630);
  statement(6640, [] { LinesRs["HOURS"] = NumberIn(kTimeBox); });
  statement(6650, [] { LinesRs["EVENT_TYPE"] = "X"; });
}

bool SaysStandardRate() { return UpperCase(Trim(BoxText(kRateBox))).starts_with("S"); }

/// Gross of a line with a quantity is known at once. A line of the plain layout without one is hours
/// at a rate; at the standard rate only the office can tell what it comes to.
void SetGross() {
  double quantity = 0, rate = 0;
  statement(6700, [&] { quantity = LinesRs["QUANTITY"].Get().NumberOrZero(); });
  statement(6710, [&] { rate = LinesRs["RATE"].Get().NumberOrZero(); });
  if (quantity != 0) {
    statement(6720, [&] { LinesRs["GROSS"] = quantity * rate; });
  } else if (!mnuUseTimeClock.Checked && rate != kStdRate) {
    statement(6730, [&] { LinesRs["GROSS"] = LinesRs["HOURS"].Get().NumberOrZero() * rate; });
  }
  Value gross;
  statement(6740, [&] { gross = LinesRs["GROSS"]; });
  if (!gross.IsNull()) statement(6750, [&] { LinesRs["GROSS"] = Format(gross, "#0.00"); });
}

void SetQuantityAndRate() {
  statement(6660, [] { LinesRs["QUANTITY"] = NumberIn(kQuantityBox); });
  statement(6670, [] { LinesRs["QUAN_DESC"] = BoxText(kQuanDescBox); });
  statement(6674, [] { BlankIfEmpty(LinesRs["QUAN_DESC"]); });
  statement(6680, [] { LinesRs["RATE"] = NumberIn(kRateBox); });
  if (SaysStandardRate()) statement(6690, [] { LinesRs["RATE"] = kStdRate; });
  SetGross();
}

/// A clock-out carries no costing, whatever the boxes hold.
void SetCosting() {
  statement(6760, [] { LinesRs["ENTERPRISE"] = NumberIn(kEnterpriseBox); });
  statement(6770, [] { LinesRs["OPERATION"] = NumberIn(kOperationBox); });
  statement(6780, [] { LinesRs["EQUIP_NUMB"] = NumberIn(kEquipBox); });
  statement(6790, [] { SetMemo(LinesRs, txtInput[kMemoBox].Text); });
  bool clockOut = false;
  statement(6810, [&] { clockOut = LinesRs["EVENT_TYPE"].Get() == Value("O"); });
  if (!clockOut) return;
  statement(6820, [] { LinesRs["ENTERPRISE"] = 0; });
  statement(6830, [] { LinesRs["OPERATION"] = 0; });
  statement(6840, [] { LinesRs["EQUIP_NUMB"] = 0; });
}

}  // namespace

void WriteValues() {
  std::int32_t EmplNumb = 0;
  statement(6500, [&] { EmplNumb = ToLong(NumberIn(kEmplBox)); });
  if (EmplNumb < kLowestEmplNumb || EmplNumb > kHighestEmplNumb) {
    Beep();
    statement(6510, [] { MsgBox("Bad employee number!", BoxButtons::Ok, BoxIcon::Exclamation); });
    statement(6514, [] { txtInput[kEmplBox].SetFocus(); });
    return;
  }
  if (!IsDone(statement, 6520, [] { LinesRs.AddNew(); })) return;
  statement(6530, [&] { LinesRs["EMPL_NUMB"] = EmplNumb; });
  SetSortName(statement, 6540, LinesRs, EmplNumb);
  if (mnuUseTimeClock.Checked) {
    SetTimeClockFields();
  } else {
    SetPlainFields();
  }
  SetQuantityAndRate();
  SetCosting();
  statement(6850, [] { LinesRs.Update(); });
}

}  // namespace ostrel
