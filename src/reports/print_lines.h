#pragma once

// Print Displayed Lines: the grid on paper as it stands on the screen, columns, rows and order, under
// a header with client, day and comment. No print dialog: it goes to the default printer at once.
// Called by the menu; leaves the view as it was.

namespace ostrel {

/// The memo column is printed at half its width in the time clock layout and gets its width back
/// whatever becomes of the printing.
void mnuPrintLines_Click();

}  // namespace ostrel
