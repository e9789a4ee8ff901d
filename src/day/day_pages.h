#pragma once

// The pages of the window of the day: what to check, who earns what, who is in now.

#include "day/day_page.h"
#include "day/day_view.h"

namespace ostrel {

/// What FindingsOf finds, a row each.
DayPage ToCheckPage(const DayView& view);

/// An employee a row, the one who misses most to the minimum wage first; behind those whose pay is
/// known come those paid wholly at the standard rate, which only the office knows.
DayPage WagesPage(const DayView& view);

/// Who is clocked in, since when, on which job, and the day's pieces so far.
DayPage InNowPage(const DayView& view);

}  // namespace ostrel
