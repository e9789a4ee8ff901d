#pragma once

// The clock-in that the operator has agreed to when a line is saved for an employee without one.
// Called by the save command, behind the line itself.

#include <string>

namespace ostrel {

/// Adds a clock-in for the employee in the employee box, on the day of the date box, with the
/// costing codes and the memo of the boxes.
///   AutoClockInVal  a time text; the empty text means midnight
void AutoClockIn(const std::string& AutoClockInVal);

}  // namespace ostrel
