#pragma once

// Clocking out everybody who is clocked in on the day of the date box, all at one time of day that
// the foreman confirms or changes.

namespace ostrel {

void mnuClockoutAllEmpls_Click();

}  // namespace ostrel
