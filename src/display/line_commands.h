#pragma once

// Line commands: delete the selected lines, cut, copy and paste in whatever has the focus, and the
// jump to the description box. Called by the menu.

namespace ostrel {

/// Asks once for all selected lines and deletes them one by one, each durable by itself. Leaves the
/// view read anew, nothing selected and the focus in the employee box. With no line selected it says
/// how to select one; a line that cannot be found is reported, and the others go all the same.
void mnuDeleteLine_Click();

/// The clipboard holds the selected text of the control with the focus; Cut takes it out there.
/// Without a selection that is the empty text. A control that holds no text is reported.
void mnuCut_Click();
void mnuCopy_Click();

/// The clipboard's text takes the place of the selection, line breaks and control characters as
/// blanks; the caret stands behind it.
void mnuPaste_Click();

/// The focus goes to the description box, the first of the less used ones.
void mnuJumpQDesc_Click();

}  // namespace ostrel
