#pragma once

// Clocking out everybody who is clocked in on the day of the date box, all at one time of day that
// the foreman confirms or changes.

namespace ostrel {

/// Leaves a clock-out for each of them, written in one durable commit, and the display up to date;
/// nothing where the date box holds no day, nobody is clocked in, or the foreman cancels.
void mnuClockoutAllEmpls_Click();

}  // namespace ostrel
