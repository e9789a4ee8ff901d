#pragma once

// What a day pays: which lines the office gets, with which hours, and what they come to. The import
// file (exchange/import_file.h) carries the same lines; their gross is worked out here as the office
// will, quantity or hours times rate, and left out where only the office knows the rate.

#include <optional>

#include "day/worked_day.h"

namespace ostrel {

enum class Carried { Nothing, Hours, Pieces };

struct LinePay {
  Carried As = Carried::Nothing;
  double Hours = 0;
  std::optional<double> Gross;  ///< nothing at the standard rate
};

/// What the import file carries of a line.
LinePay PayOf(const DayLine& line, const LineWork& work, bool timeClock);

/// One employee's day. All to two decimals.
struct EmployeePay {
  double Pieces = 0;
  double Hours = 0;                   ///< with those at the standard rate
  double StandardHours = 0;           ///< of these, those whose pay only the office knows
  bool AtStandard = false;            ///< has lines at the standard rate
  double Gross = 0;                   ///< of the rest
  std::optional<double> GrossAnHour;  ///< of the rest; nothing where that has no hours
  double Missing = 0;  ///< dollars that the rest would have to earn more for the minimum wage
};

EmployeePay PayOf(const EmployeeDay& employee, const DayFacts& facts, const WorkedDay& worked,
                  bool timeClock, double minWage);

}  // namespace ostrel
