#pragma once

// Totals: the grid's footers and the line count, asked of the store anew each time, so that they
// always say what it holds.

namespace ostrel {

/// Rewrites the footers of quantity, hours, gross and day and the count of lines, over the filter of
/// the view, and repaints the grid.
void DisplayTotals();

}  // namespace ostrel
