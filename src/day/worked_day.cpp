#include "day/worked_day.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

#include "platform/values/dates.h"

namespace ostrel {

namespace {

constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsPerDay = 24 * kSecondsPerHour;
/// As many as the calculation takes; it reports the next one and goes on without it.
constexpr std::size_t kMostPeriods = 200;

/// Where an open period ends.
struct OpenEnd {
  int Second = -1;  ///< -1 where the default clock-out is no time
  bool IsNow = false;
};

OpenEnd OpenEndOf(const DayClock& clock) {
  if (!IsDate(clock.ClockOut)) return {};
  const int now = MinuteOf(clock.Now) * kSecondsPerMinute;
  const int clockOut = static_cast<int>(std::lround(TimeValue(clock.ClockOut) * kSecondsPerDay));
  return now < clockOut ? OpenEnd{now, true} : OpenEnd{clockOut, false};
}

/// The calculation goes by whole numbers; a line of any other never gets hours.
bool IsCalculated(double number) { return number == std::floor(number) && number != 0; }

double HoursBetween(int from, int to) {
  const int seconds = std::abs(to - from);
  const int hours = seconds / kSecondsPerHour;
  const int minutes = seconds % kSecondsPerHour / kSecondsPerMinute;
  return HundredthsOrZero(hours + minutes / 60.0);
}

class EmployeeCalculation {
 public:
  EmployeeCalculation(const DayFacts& facts, EmployeeDay& employee, std::vector<LineWork>& work)
      : facts_(facts), employee_(employee), work_(work) {}
  void Run(const OpenEnd& openEnd);

 private:
  void TakeLine(std::size_t place);
  void OpenPeriod(std::size_t place);
  void SpreadHours(const WorkPeriod& period);
  void GiveShare(const WorkPeriod& period, std::size_t place);

  const DayFacts& facts_;
  EmployeeDay& employee_;
  std::vector<LineWork>& work_;
};

void EmployeeCalculation::Run(const OpenEnd& openEnd) {
  for (const std::size_t place : employee_.Lines) TakeLine(place);
  if (employee_.Periods.empty()) return;
  WorkPeriod& last = employee_.Periods.back();
  if (last.Open) {
    last.To = openEnd.Second;
    last.UntilNow = openEnd.IsNow;
  }
  for (WorkPeriod& period : employee_.Periods) {
    if (period.To >= 0) period.Hours = HoursBetween(period.From, period.To);
    LineWork& clockIn = work_[period.ClockIn];
    clockIn.Hours = period.PieceGross != 0 ? 0 : period.Hours;
    clockIn.HasHours = true;
    if (period.PieceGross != 0) SpreadHours(period);
  }
}

void EmployeeCalculation::TakeLine(std::size_t place) {
  const DayLine& line = facts_.Lines[place];
  if (line.Kind == kInKind) return OpenPeriod(place);
  if (employee_.Periods.empty()) return;
  WorkPeriod& running = employee_.Periods.back();
  if (line.Kind == kPieceKind && line.Quantity != 0) {
    running.PieceGross += line.Quantity * line.Rate;
  } else if (line.Kind == kOutKind) {
    running.To = line.Minute * kSecondsPerMinute;
    running.Open = false;
  }
}

/// A clock-in ends an open period at the same minute.
void EmployeeCalculation::OpenPeriod(std::size_t place) {
  if (employee_.Periods.size() == kMostPeriods) return;
  const int from = facts_.Lines[place].Minute * kSecondsPerMinute;
  if (!employee_.Periods.empty() && employee_.Periods.back().Open) {
    employee_.Periods.back().To = from;
    employee_.Periods.back().Open = false;
  }
  employee_.Periods.push_back({.ClockIn = place, .From = from, .To = from, .Open = true});
}

void EmployeeCalculation::SpreadHours(const WorkPeriod& period) {
  for (const std::size_t place : employee_.Lines) {
    const DayLine& line = facts_.Lines[place];
    const bool shares = line.Kind == kPieceKind && line.Quantity != 0 && period.Holds(line.Minute);
    if (shares) GiveShare(period, place);
  }
}

/// Gross an hour is that of the rounded figures beside it; with no hours there is none.
void EmployeeCalculation::GiveShare(const WorkPeriod& period, std::size_t place) {
  const double gross = facts_.Lines[place].Quantity * facts_.Lines[place].Rate;
  LineWork& work = work_[place];
  work.HasHours = true;
  if (const auto rounded = Hundredths(gross)) work.Gross = rounded;
  if (const auto hours = Hundredths(period.Hours * gross / period.PieceGross)) work.Hours = hours;
  if (work.Hours.value_or(0) == 0) return;
  const auto hourly = Hundredths(work.Gross.value_or(0) / *work.Hours);
  if (hourly) work.HourGross = hourly;
}

std::vector<EmployeeDay> EmployeesOf(const DayFacts& facts) {
  std::vector<std::size_t> places(facts.Lines.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
    return facts.Lines[a].EmplNumb < facts.Lines[b].EmplNumb;
  });
  std::vector<EmployeeDay> employees;
  for (const std::size_t place : places) {
    const double number = facts.Lines[place].EmplNumb;
    if (employees.empty() || employees.back().Number != number)
      employees.push_back({.Number = number, .Lines = {}, .Periods = {}});
    employees.back().Lines.push_back(place);
  }
  return employees;
}

}  // namespace

bool WorkPeriod::Holds(int minute) const {
  const int second = minute * kSecondsPerMinute;
  return From <= second && second <= To;
}

const WorkPeriod* EmployeeDay::OpenPeriod() const {
  return !Periods.empty() && Periods.back().Open ? &Periods.back() : nullptr;
}

const EmployeeDay* WorkedDay::Find(double number) const {
  const auto found = std::lower_bound(
      Employees.begin(), Employees.end(), number,
      [](const EmployeeDay& employee, double wanted) { return employee.Number < wanted; });
  return found != Employees.end() && found->Number == number ? &*found : nullptr;
}

WorkedDay WorkOutDay(const DayFacts& facts, const DayClock& clock) {
  WorkedDay worked;
  worked.Lines.reserve(facts.Lines.size());
  for (const DayLine& line : facts.Lines)
    worked.Lines.push_back({line.Hours, line.Gross, line.HourGross});
  worked.Employees = EmployeesOf(facts);
  if (!clock.TimeClock) return worked;
  const OpenEnd openEnd = OpenEndOf(clock);
  for (EmployeeDay& employee : worked.Employees) {
    if (IsCalculated(employee.Number))
      EmployeeCalculation(facts, employee, worked.Lines).Run(openEnd);
  }
  return worked;
}

std::size_t LinesToWorkOut(const DayFacts& facts, const WorkedDay& worked) {
  std::size_t count = 0;
  for (std::size_t place = 0; place < facts.Lines.size(); ++place) {
    const DayLine& line = facts.Lines[place];
    const LineWork& work = worked.Lines[place];
    const bool same =
        line.Hours == work.Hours && line.Gross == work.Gross && line.HourGross == work.HourGross;
    if (!same) ++count;
  }
  return count;
}

}  // namespace ostrel
