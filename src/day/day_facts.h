#pragma once

// What is known of one day, as plain facts: its lines, the clock that they are judged by, and what
// the office has told of its employees. The rules about a day (what is odd in it, who earns too
// little, who is clocked in, what goes onto a slip) are functions of these and of nothing else;
// read_day.h is where they come from.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database/recordset.h"
#include "platform/values/moment.h"

namespace ostrel {

/// Kinds of lines by their code in the store; any other code, or none, is kOtherKind.
inline constexpr char kInKind = 'I', kOutKind = 'O', kPieceKind = 'P', kPlainKind = 'X',
                      kOtherKind = '?';

/// One line. A number that was never set is 0, but for those that the payroll calculation leaves.
struct DayLine {
  Bookmark Row = 0;  ///< leads to the line in any recordset that holds it
  double EmplNumb = 0;
  std::string Name;  ///< without blanks at its ends, as all texts here
  int Minute = 0;    ///< of the day, 0 to 1439, as the time of the line is shown
  char Kind = kOtherKind;
  double Quantity = 0;
  std::string Unit;  ///< description of the quantity
  double Rate = 0;   ///< kStdRate marks the standard rate
  double Enterprise = 0, Operation = 0, Equipment = 0;
  std::string Memo;
  std::optional<double> Gross = {}, HourGross = {}, Hours = {};  ///< as they stand in the store

  bool IsWork() const { return Kind == kPieceKind || Kind == kPlainKind; }
};

struct DayFacts {
  int Day = 0;                 ///< days since 30 December 1899
  std::vector<DayLine> Lines;  ///< in order of time, among equals as they were entered
};

/// How and when a day is looked at.
struct DayClock {
  bool TimeClock = true;  ///< the layout in force: events at clock times, else typed hours
  Moment Now;
  std::string ClockOut;  ///< time text; where an open clock-in ends at the latest

  /// Whether everything looks the same by both: times count to the minute.
  bool SameMinute(const DayClock& other) const;
};

struct OfficeEmployee {
  double Number = 0;
  std::string Name;
  double Crew = 0;  ///< 0 for none
};

struct Office {
  double MinWage = 0;                     ///< dollars an hour; 0 where it is not known
  std::vector<OfficeEmployee> Employees;  ///< in order of numbers; none where there is no list

  /// The first employee of a number, or nothing.
  const OfficeEmployee* Find(double number) const;
};

/// "130", "12.1": a number of single precision as it stands in the grid.
std::string NumberText(double number);

/// "12:30 pm".
std::string TimeText(int minute);

/// The minute of the day in which a moment is shown.
int MinuteOf(Moment moment);

/// Amounts and hours as the store takes them: to two decimals, a tie away from zero; nothing for
/// what is no finite number.
std::optional<double> Hundredths(double number);

/// The same, 0 for what is no finite number.
double HundredthsOrZero(double number);

/// "1234.50"
std::string MoneyText(double amount);

/// "24 BOX", "24 pieces" where the line does not say of what.
std::string QuantityText(const DayLine& line);

/// What units are compared by: "box " is "BOX".
std::string UnitKey(std::string_view unit);

}  // namespace ostrel
