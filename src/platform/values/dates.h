#pragma once

// Reading dates and times from text, the way a foreman types them.
//
// Order is month, day, year, parted by "/" or "-"; the year may be left out and is then the present
// one. Two-digit years lie in a window that slides with the clock: from 80 years back to 19 ahead.
// Hours, minutes and seconds are parted by ":"; before am/pm also by ".". am/pm may be a, p, am, pm
// in any case, with or without a blank before it. "2 pm" is a time, a bare "8" is nothing.
// "13.00 pm" is 1 pm: a pm behind an hour above 12 says nothing new. Date and time may stand
// together, parted by blanks, in that order.

#include <optional>
#include <string>
#include <string_view>

#include "platform/values/moment.h"

namespace ostrel {

/// The one reader behind all that follows.
///   returns  nothing when the text is no date, no time and no date with time
std::optional<Moment> ReadMoment(std::string_view text);

/// The date test: whether ReadMoment finds something.
bool IsDate(std::string_view text);

/// The fraction of a day that the text's time part stands for, 0 <= x < 1; 0 without a time part.
///   throws   Failure 13 when the text fails the date test
///   example  "8:00 am" -> 1.0 / 3
double TimeValue(std::string_view text);

/// The date part in whole days; 0 for a text with only a time.
///   throws   Failure 13 when the text fails the date test
double DateValue(std::string_view text);

/// Date and time together, as the store reads a text given to a date field.
///   throws   Failure 13 when the text fails the date test
Moment MomentFrom(std::string_view text);

}  // namespace ostrel
