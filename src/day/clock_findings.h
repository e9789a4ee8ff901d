#pragma once

// What is odd about the ins and outs of one employee's day: each in wants an out, and each out an in.
//
// An out and an in at the same minute are an ordinary change of jobs, in whichever order they were
// entered: the hours come out the same. Work past midnight is judged by its own day: an in without an
// out on the one, an out without an in on the other, for that is how the hours will be worked out.
// An open in of today is no oddity before the default clock-out: people are still at work.

#include <vector>

#include "day/day_view.h"
#include "day/finding.h"

namespace ostrel {

/// Nothing in the plain layout, which has no clock.
std::vector<Finding> ClockFindingsOf(const DayView& view, const EmployeeDay& employee);

}  // namespace ostrel
