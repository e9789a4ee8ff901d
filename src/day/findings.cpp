#include "day/findings.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <unordered_set>
#include <utility>

#include "day/clock_findings.h"
#include "frame/standard_rate.h"
#include "platform/values/numbers.h"

namespace ostrel {

namespace {

constexpr double kLongDay = 14;  // hours

/// A line with all that a rule may ask.
struct Case {
  const DayView& View;
  const EmployeeDay& Employee;
  const DayLine& Line;
  const LineWork& Work;
  bool Repeated;  ///< a line of the same contents stands before it
};

std::string At(const DayLine& line) { return " at " + TimeText(line.Minute); }

bool HasPieces(const DayLine& line) { return line.IsWork() && line.Quantity != 0; }

std::string RateText(double rate) {
  return rate == kStdRate ? "the standard rate" : "rate " + GeneralText(rate);
}

// The rules. Each says what is odd about a line, or nothing.

std::string PiecesWithoutHours(const Case& c) {
  const bool meant = c.View.Clock.TimeClock && c.Line.Kind == kPieceKind && c.Line.Quantity != 0 &&
                     c.Line.Rate != 0 && !c.Work.HasHours;
  if (!meant) return {};
  const bool clockedIn =
      std::any_of(c.Employee.Periods.begin(), c.Employee.Periods.end(),
                  [&](const WorkPeriod& period) { return period.Holds(c.Line.Minute); });
  return QuantityText(c.Line) + At(c.Line) +
         (clockedIn ? " take no hours: the pieces since that clock-in come to nothing"
                    : " while not clocked in: no hours go to them");
}

std::string SameLineTwice(const Case& c) { return c.Repeated ? "the same line twice" : ""; }

std::string NegativeQuantity(const Case& c) {
  return c.Line.Quantity < 0 ? "quantity below 0: " + QuantityText(c.Line) : "";
}

std::string FarAboveUsual(const Case& c) {
  const bool far = c.Line.IsWork() && c.View.Usual.IsFarAbove(c.Line.Unit, c.Line.Quantity);
  if (!far) return {};
  return QuantityText(c.Line) + ", the day's usual is " +
         GeneralText(*c.View.Usual.Of(c.Line.Unit));
}

std::string PiecesWithoutRate(const Case& c) {
  const bool odd = HasPieces(c.Line) && (c.Line.Rate == 0 || c.Line.Rate == kStdRate);
  return odd ? QuantityText(c.Line) + " at " + RateText(c.Line.Rate) : "";
}

std::string OddUnit(const Case& c) {
  const std::string unit = UnitKey(c.Line.Unit);
  const bool odd = HasPieces(c.Line) && (unit == "HRS" || unit == "0");
  return odd ? "pieces described as \"" + c.Line.Unit + "\"" : "";
}

std::string LowHourlyRate(const Case& c) {
  const LinePay pay = PayOf(c.Line, c.Work, c.View.Clock.TimeClock);
  const bool odd = pay.As == Carried::Hours && pay.Hours != 0 && c.Line.Rate > 0 &&
                   c.Line.Rate < c.View.TheOffice->MinWage;
  if (!odd) return {};
  return MoneyText(pay.Hours) + " hours at " + GeneralText(c.Line.Rate) +
         " an hour, the minimum wage is " + MoneyText(c.View.TheOffice->MinWage);
}

std::string GrossNotQuantityTimesRate(const Case& c) {
  if (!c.Line.IsWork()) return {};
  if (c.Line.Quantity == 0 && c.Line.Kind == kPlainKind) return {};  // hours times rate
  const double gross = HundredthsOrZero(c.Line.Quantity * c.Line.Rate);
  if (c.Line.Gross.value_or(0) == gross) return {};
  return (c.Line.Gross ? "gross " + MoneyText(*c.Line.Gross) : "no gross") + " instead of " +
         GeneralText(c.Line.Quantity) + " x " + GeneralText(c.Line.Rate) + " = " + MoneyText(gross);
}

/// The file goes by the layout in force, not by the one in which a line was entered.
std::string OtherLayout(const Case& c) {
  const bool clockLine = c.Line.Kind != kPlainKind && c.Line.Kind != kOtherKind;
  if (clockLine == c.View.Clock.TimeClock && c.Line.Kind != kOtherKind) return {};
  if (c.View.Clock.TimeClock) {
    return c.Line.Kind == kPlainKind
               ? "entered without the time clock: the import file leaves it out"
               : "neither in, out nor pieces: the import file leaves it out";
  }
  return clockLine ? "entered with the time clock: goes out with the hours last worked out" : "";
}

struct LineRule {
  Oddity Kind;
  std::string (*Says)(const Case&);
};

constexpr std::array kLineRules = {
    LineRule{Oddity::PiecesWithoutHours, PiecesWithoutHours},
    LineRule{Oddity::SameLineTwice, SameLineTwice},
    LineRule{Oddity::NegativeQuantity, NegativeQuantity},
    LineRule{Oddity::FarAboveUsual, FarAboveUsual},
    LineRule{Oddity::PiecesWithoutRate, PiecesWithoutRate},
    LineRule{Oddity::OddUnit, OddUnit},
    LineRule{Oddity::LowHourlyRate, LowHourlyRate},
    LineRule{Oddity::GrossNotQuantityTimesRate, GrossNotQuantityTimesRate},
    LineRule{Oddity::OtherLayout, OtherLayout},
};

/// All that the foreman entered, as one text to compare; the numbers by their bytes.
std::string ContentsOf(const DayLine& line) {
  const double typedHours = line.Kind == kPlainKind ? line.Hours.value_or(0) : 0;
  const std::array numbers{static_cast<double>(line.Minute),
                           line.Quantity,
                           line.Rate,
                           line.Enterprise,
                           line.Operation,
                           line.Equipment,
                           typedHours};
  std::string contents(sizeof numbers, '\0');
  std::memcpy(contents.data(), numbers.data(), sizeof numbers);
  return contents + line.Kind + UnitKey(line.Unit) + '\n' + UnitKey(line.Memo);
}

class EmployeeJudge {
 public:
  EmployeeJudge(const DayView& view, const EmployeeDay& employee)
      : view_(view), employee_(employee) {}
  std::vector<Finding> Findings();

 private:
  void FindRepeated();
  void JudgeLines();
  void JudgeDay();

  const DayView& view_;
  const EmployeeDay& employee_;
  std::unordered_set<std::size_t> repeated_;  // lines
  std::vector<Finding> found_;
};

std::vector<Finding> EmployeeJudge::Findings() {
  FindRepeated();
  for (Finding& finding : ClockFindingsOf(view_, employee_)) {
    // Somebody clocked in twice over has one line too many, which is said once.
    if (finding.Kind == Oddity::InWhileIn && repeated_.contains(finding.Line)) continue;
    found_.push_back(std::move(finding));
  }
  JudgeLines();
  JudgeDay();
  std::stable_sort(found_.begin(), found_.end(),
                   [](const Finding& a, const Finding& b) { return a.Line < b.Line; });
  return std::move(found_);
}

void EmployeeJudge::FindRepeated() {
  std::unordered_set<std::string> seen;
  for (const std::size_t place : employee_.Lines) {
    if (!seen.insert(ContentsOf(view_.Facts.Lines[place])).second) repeated_.insert(place);
  }
}

void EmployeeJudge::JudgeLines() {
  for (const std::size_t place : employee_.Lines) {
    const Case judged{view_, employee_, view_.Facts.Lines[place], view_.Worked.Lines[place],
                      repeated_.contains(place)};
    for (const LineRule& rule : kLineRules) {
      std::string what = rule.Says(judged);
      if (!what.empty()) found_.push_back({rule.Kind, place, std::move(what)});
    }
  }
}

/// What is odd about the employee's whole day leads to the first line, or to the longest.
void EmployeeJudge::JudgeDay() {
  if (view_.IsUnknown(employee_.Number)) {
    found_.push_back({Oddity::UnknownNumber, employee_.Lines.front(),
                      NumberText(employee_.Number) + " is not in the office's list"});
  }
  const EmployeePay pay = view_.PayOf(employee_);
  if (pay.Hours <= kLongDay) return;
  const auto hours = [&](std::size_t place) {
    return PayOf(view_.Facts.Lines[place], view_.Worked.Lines[place], view_.Clock.TimeClock).Hours;
  };
  const auto longest =
      std::max_element(employee_.Lines.begin(), employee_.Lines.end(),
                       [&](std::size_t a, std::size_t b) { return hours(a) < hours(b); });
  found_.push_back({Oddity::LongDay, *longest, MoneyText(pay.Hours) + " hours on one day"});
}

}  // namespace

std::vector<Finding> FindingsOf(const DayView& view) {
  std::vector<Finding> all;
  for (const EmployeeDay& employee : view.Worked.Employees) {
    for (Finding& finding : EmployeeJudge(view, employee).Findings())
      all.push_back(std::move(finding));
  }
  return all;
}

}  // namespace ostrel
