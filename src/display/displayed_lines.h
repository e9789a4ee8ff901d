#pragma once

// Displayed lines: which lines the grid shows and in which order. The view has no variables of its
// own; its state is that of the date box, the employee box and three menu checks.

namespace ostrel {

/// Rebuilds the view and its totals.
void SetRecordSource();

void mnuDisplayCurrentEmpl_Click();
void mnuEmplOrder_Click();

}  // namespace ostrel
