#pragma once

// Two routines that the entry, hours and crew commands lean on: the clock-in that the operator has
// agreed to when a line is saved for an employee without one, and the walk over a list of employees.

#include <cstdint>
#include <string>

namespace ostrel {

/// Adds a clock-in for the employee in the employee box, on the day of the date box, with the
/// costing codes and the memo of the boxes.
///   AutoClockInVal  a time text; the empty text means midnight
void AutoClockIn(const std::string& AutoClockInVal);

/// Takes one employee number off a list such as "in (12,15,20)".
///   EmplList  shortened by one number; empty when it was the last
///   EmplN     out: the number, 0 where there is none
/// Positions in the list are 16-bit numbers: one of more than 32767 characters is a failure.
void ParseNextEmpl(std::string& EmplList, std::int32_t& EmplN);

}  // namespace ostrel
