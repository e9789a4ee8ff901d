#pragma once

// Days as numbers and as dates of the calendar, which is the Gregorian one for all years.

#include <optional>

#include "platform/values/moment.h"

namespace ostrel {

/// Whole days since 30 December 1899 of a calendar date; nothing for a day that is none, and outside
/// the years 100 to 9999.
std::optional<int> DayNumber(int year, int month, int day);

struct CivilDate {
  int Year;
  int Month;  ///< 1 to 12
  int Day;    ///< 1 to 31
};
CivilDate CivilFromDays(int days);

/// A moment's whole-day part, rounded down: the work day that a line belongs to.
double DayOf(Moment moment);

}  // namespace ostrel
