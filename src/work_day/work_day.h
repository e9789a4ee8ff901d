#pragma once

// The work day: the one day that the foreman works on, as the date box at the top of the form holds
// it. Commands that work on one day ask here whether there is one, which it is, how the store is
// asked for its lines and who is clocked in on it, and say so here where they cannot go on.
//
// The date box holds a day, "All", or whatever is half typed in it; nothing else remembers the day.

#include <cstdint>
#include <string>

#include "frame/failure_reporting.h"

namespace ostrel {

/// Whether the date box holds a day.
bool HasWorkDay();

/// The work day in DateFormat.
///   throws  Failure 13 when the date box holds none
std::string WorkDay();

/// The text of a moment on the work day: "06/14/04 08:00 am".
///   time    a time text; the empty text means midnight
///   throws  Failure 13 when the date box holds no day
std::string OnWorkDay(const std::string& time);

/// Where text for the lines of one day: " where INT(ETIME) = #06/14/04#".
///   day  a date text; with the empty text a lookup finds nothing
std::string WhereDay(const std::string& day);

/// The latest day in the store in DateFormat; day 0 where it is empty.
///   throws  the failure of the pattern where the latest moment is none
std::string LatestDay();

/// Where text for the lines of the work day, with the date box's text as it stands.
std::string WhereWorkDay();

/// The employees clocked in on the work day, as "in (101,102,130)"; the empty text for nobody.
///   ListCount  out: how many
std::string EmployeesClockedIn(std::int32_t& ListCount);

// What every command that works on one day says when it cannot. Each beeps and shows its box as
// statement `line` of the caller's tail.

void SayNoDay(const FailureTail& statement, std::int32_t line);
void SayNobodyClockedIn(const FailureTail& statement, std::int32_t line);

}  // namespace ostrel
