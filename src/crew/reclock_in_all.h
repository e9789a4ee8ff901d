#pragma once

// Clocking everybody in again, after lunch say: each employee clocked in on the day of the date box
// gets a copy of the latest clock-in of the day at a new time, so that costing codes, rate and memo
// carry over.

namespace ostrel {

/// LinesRs stays bound to the day's clock-ins.
void mnuReClockInAllEmpls_Click();

}  // namespace ostrel
