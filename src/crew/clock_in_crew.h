#pragma once

// Clocking in a crew: the line on the form is saved once for each employee whom the office's table
// puts in the crew.

namespace ostrel {

/// Asks for the crew's number, offering the one behind the first "#" of the comment box.
void mnuClockInACrew_Click();

}  // namespace ostrel
