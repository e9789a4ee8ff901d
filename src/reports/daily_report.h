#pragma once

// Print Employee's Daily Report: one print job for each employee with lines under the date filter,
// newest line first, to be signed by that employee and filed. Called by the menu. It borrows the
// view's own switches to show one employee after the other and puts them back; the employee box
// keeps the number of the last one printed.

namespace ostrel {

/// With no lines under the filter one empty report comes out, for employee 0.
void mnuEmplDailyRpt_Click();

}  // namespace ostrel
