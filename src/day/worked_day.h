#pragma once

// A day as the payroll calculation (hours/employee_hours.h) would leave it, worked out in memory: the
// clock events of each employee paired into periods, and the hours spread over the piecework. The
// store stays as it is, so this may be asked at any key; the tests hold it to the calculation's own
// results on random days.

#include <cstddef>
#include <optional>
#include <vector>

#include "day/day_facts.h"

namespace ostrel {

/// One clock-in of an employee with what follows it up to the next. Times are seconds of the day.
struct WorkPeriod {
  std::size_t ClockIn = 0;  ///< its line, a place in DayFacts::Lines
  int From = 0, To = 0;     ///< To may lie before From, where the default clock-out does
  bool Open = false;        ///< nothing ends it: To is now or the default clock-out
  bool UntilNow = false;    ///< open, and the default clock-out is still to come
  double Hours = 0;
  double PieceGross = 0;  ///< where it is 0 the hours belong to the clock-in, else to the pieces

  bool Holds(int minute) const;  ///< both ends included
};

struct EmployeeDay {
  double Number = 0;
  std::vector<std::size_t> Lines;   ///< places in DayFacts::Lines, in its order
  std::vector<WorkPeriod> Periods;  ///< none in the plain layout

  const WorkPeriod* OpenPeriod() const;  ///< the last one while the employee is clocked in
};

/// What the calculation would leave in a line; the stored value where it would leave it alone.
struct LineWork {
  std::optional<double> Hours, Gross, HourGross;
  bool HasHours = false;  ///< the calculation gives the line its hours, be they 0
};

struct WorkedDay {
  std::vector<LineWork> Lines;         ///< by the places in DayFacts::Lines
  std::vector<EmployeeDay> Employees;  ///< in order of numbers

  const EmployeeDay* Find(double number) const;
};

/// In the plain layout hours are typed: the lines are grouped by employee and stay as stored.
WorkedDay WorkOutDay(const DayFacts& facts, const DayClock& clock);

/// Lines that stand in the store otherwise than the calculation would leave them now. While somebody
/// is clocked in, that can be the mere passing of time.
std::size_t LinesToWorkOut(const DayFacts& facts, const WorkedDay& worked);

}  // namespace ostrel
