#pragma once

// The date box and the comment box at the top of the form. The date box holds the day that the
// foreman works on, or "All"; the comment box a remark that outlives the run, and the number of the
// crew behind its first "#". Both hand the focus back to the employee box.

#include <string>

namespace ostrel {

/// The date box's day in DateFormat.
///   throws  Failure 13 when it holds none
std::string DayOfDateBox();

void txtToday_GotFocus();
void txtToday_LostFocus();
void txtToday_KeyDown(int KeyCode, int Shift);
void txtToday_KeyPress(int& KeyAscii);

void txtComments_GotFocus();
void txtComments_LostFocus();
void txtComments_KeyDown(int KeyCode, int Shift);
void txtComments_KeyPress(int& KeyAscii);

void mnuDisplayAllDates_Click();

}  // namespace ostrel
