#pragma once

// The computer's clock, as the whole house reads it. One place to ask, so that a test can set the
// time and move it.

#include <ctime>
#include <functional>

#include "platform/values/moment.h"

namespace ostrel {

/// The present local date and time, to the second or finer.
Moment Now();

/// Date and time on the wall clock of this computer's time zone, to the second.
Moment LocalMoment(std::time_t seconds);

/// Replaces the clock; an empty function brings the computer's own clock back.
void SetClock(std::function<Moment()> clock);

/// Seconds since local midnight, 0 up to but not including 86400.
double SecondsSinceMidnight();

}  // namespace ostrel
