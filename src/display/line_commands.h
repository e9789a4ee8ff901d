#pragma once

// Line commands: delete the selected lines, cut, copy and paste in whatever has the focus, and the
// jump to the description box.

namespace ostrel {

void mnuDeleteLine_Click();
void mnuCut_Click();
void mnuCopy_Click();
void mnuPaste_Click();
void mnuJumpQDesc_Click();

}  // namespace ostrel
