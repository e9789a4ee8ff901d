#pragma once

// Where the facts of a day come from: one look at the store for its lines, one at the office's
// tables. Nothing else about a day reads either, and nothing here changes what it reads: the rows
// that the entry stands on stay current.

#include <string>

#include "day/day_facts.h"

namespace ostrel {

/// The lines of one day, of all employees, whatever the view is filtered to.
///   day     a date text, as the date box holds it
///   throws  Failure 13 for a text that is no date, and what the store throws
DayFacts ReadDay(const std::string& day);

/// The office's employees and the minimum wage as their files are now. A table without names, crews
/// or numbers gives what it has.
///   throws  what opening the table throws
Office ReadOffice();

/// The form's layout and settings, and the present time.
DayClock PresentClock();

}  // namespace ostrel
