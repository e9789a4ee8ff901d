#pragma once

// The entry row: how its boxes are filled and how the keyboard walks through them. The boxes stand
// for the line about to be written and keep their text from line to line; the caret stands at the
// start on every way in, and a key pressed there replaces the whole box.

namespace ostrel {

/// Fills the boxes from the last line of the latest day in the store, so that the foreman resumes
/// where he stopped.
void InitializeInputBoxes();

/// Opens or shuts the quantity box, which then says "0", by the layout and the event in force: a
/// quantity belongs to piecework alone where lines are events at a time of day. For whatever changes
/// either of them, or the box's text.
void FitQuantityBoxToEvent();

void txtInput_GotFocus(int Index);
void txtInput_LostFocus(int Index);
void txtInput_KeyDown(int Index, int KeyCode, int Shift);
void txtInput_KeyPress(int Index, int& KeyAscii);
void Option1_Click(int Index);

/// Moves the focus on, or back, in tab order once the running event is over.
void TabForward();
void TabBack();

}  // namespace ostrel
