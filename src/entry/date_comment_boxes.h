#pragma once

// The date box and the comment box at the top of the form. The date box holds the day that the
// foreman works on, or "All"; the comment box a remark that outlives the run, and the number of the
// crew behind its first "#". Both hand the focus back to the employee box.
//
// Leaving the date box rewrites what was typed as a day or "All", sets the weekday beside it and
// rebuilds the view. The comment is kept by the settings alone.

namespace ostrel {

void txtToday_GotFocus();
void txtToday_LostFocus();
void txtToday_KeyDown(int KeyCode, int Shift);
void txtToday_KeyPress(int& KeyAscii);

void txtComments_GotFocus();
void txtComments_LostFocus();
void txtComments_KeyDown(int KeyCode, int Shift);
void txtComments_KeyPress(int& KeyAscii);

/// Between all dates and today; rebuilds the view.
void mnuDisplayAllDates_Click();

}  // namespace ostrel
