#pragma once

// The computer's clock, as the whole house reads it. One place to ask, so that a test can set the
// time and move it.

#include <ctime>
#include <functional>

#include "platform/values/moment.h"

namespace ostrel {

/// The present local date and time, to the second, cut off: a time that were rounded up would stand
/// in the next minute, and in the last second of a day at the start of the same day.
Moment Now();

/// Date and time on the wall clock of this computer's time zone, to the second.
Moment LocalMoment(std::time_t seconds);

/// Replaces the clock, which may go by fractions of a second; an empty function brings the
/// computer's own back.
void SetClock(std::function<Moment()> clock);

/// Seconds since local midnight with their fraction, 0 up to but not including 86400.
double SecondsSinceMidnight();

}  // namespace ostrel
