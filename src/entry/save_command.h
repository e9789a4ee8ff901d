#pragma once

// The save command: the button that saves the form as one new line. It asks what is missing (a rate,
// a description, a clock-in), writes the line, writes the clock-in that the operator agreed to,
// brings the display up to date and puts the focus back into the employee box. Nothing is written
// until all questions are answered.

namespace ostrel {

void cmdSave_Click();
void cmdSave_GotFocus();
void cmdSave_LostFocus();
void cmdSave_KeyPress(int& KeyAscii);

}  // namespace ostrel
