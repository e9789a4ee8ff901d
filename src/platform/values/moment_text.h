#pragma once

// How a moment is written: each way as a function, for the patterns of format.h and for a value that
// is a date. A moment is rounded to the nearest second before it is cut to minutes, and only the size
// of the fraction of the day shows.

#include <string>

#include "platform/values/moment.h"

namespace ostrel {

/// A moment on the clock, rounded to the nearest second.
struct ClockTime {
  int Day;     ///< day number; the next day's where the second rounds up to midnight
  int Hour;    ///< 0 to 23
  int Minute;  ///< 0 to 59
  int Second;  ///< 0 to 59
};

/// throws  Failure 6 outside the calendar, which runs from the year 100 to 9999
ClockTime OnTheClock(Moment moment);

std::string OfTwentyFourHours(const ClockTime& time);  ///< 07:05, 13:30
std::string OfTwelveHours(const ClockTime& time);      ///< 07:05 am, 12:00 pm (noon), 12:00 am
std::string MonthAndDay(const ClockTime& time);        ///< 06/14
std::string MonthDayAndYear(const ClockTime& time);    ///< 06/14/04
std::string Weekday(const ClockTime& time);            ///< Monday
std::string ShortDate(const ClockTime& time);          ///< 11/30/2004
std::string GeneralDate(const ClockTime& time);        ///< 11/30/2004 3:04:05 PM

}  // namespace ostrel
