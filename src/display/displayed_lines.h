#pragma once

// Displayed lines: which lines the grid shows and in which order. The view has no variables of its
// own; its state is that of the date box, the employee box and three menu checks.

namespace ostrel {

/// Rebuilds the view and its totals.
void SetRecordSource();

/// Whether the rows on show are those of the day in the date box, or of all days where it holds none.
/// They are not when the operator has gone on behind a rebuilding that failed; what carries the day
/// for a heading asks first.
bool ShowsTheDay();

void mnuDisplayCurrentEmpl_Click();
void mnuEmplOrder_Click();

}  // namespace ostrel
