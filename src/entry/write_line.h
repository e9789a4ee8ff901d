#pragma once

// Writing a line: what stands on the form at this moment becomes one new line of the store. It
// checks the employee number and nothing else; whatever needs a word with the operator has been
// settled before the call. Hours are not worked out here.

namespace ostrel {

/// One line from the form. A number outside 1 to 99999 gets a message and no line; the caller is not
/// told. In the time clock layout the time box is rewritten with the line's time.
void WriteValues();

}  // namespace ostrel
