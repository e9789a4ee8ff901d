#pragma once

// What is worth a second look in a day before it goes to the office: a table of rules, facts in,
// findings out. A day is judged by its own lines alone.

#include <vector>

#include "day/day_view.h"
#include "day/finding.h"

namespace ostrel {

/// In order of employees, and of time within one; as many steps as there are lines, but for sorting.
std::vector<Finding> FindingsOf(const DayView& view);

}  // namespace ostrel
