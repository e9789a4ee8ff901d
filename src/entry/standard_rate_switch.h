#pragma once

// The standard rate switch: with it on, the line is paid at the employee's standard hourly rate and
// the boxes show "HRS" and "Std Rate"; with it off, both take back the values of the last line of
// the same kind.

namespace ostrel {

/// Runs on a click and whenever a routine changes the switch.
void chkStdRate_Click();

}  // namespace ostrel
