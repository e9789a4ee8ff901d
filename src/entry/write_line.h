#pragma once

// Writing a line: what stands on the form at this moment becomes one new line of the store. It
// checks the employee number and nothing else; whatever needs a word with the operator has been
// settled before the call. Hours are not worked out here.

#include <string>

namespace ostrel {

/// One line from the form. A number outside 1 to 99999 gets a message and no line; the caller is not
/// told. In the time clock layout the time box is rewritten with the line's time.
void WriteValues();

/// Makes a proper time of whatever was typed.
///   TimeIn   with an a or p in it: taken if it is a time or date, else noon; without: an hour, with
///            the minutes behind the decimal point, pm for 12 and above and up to 6, am between
///   returns  a text in TimeFormat
///   throws   Failure 13 where the decimals are no minutes
///   example  "7.3" -> "07:30 am", "5.45" -> "05:45 pm", "13" -> "01:00 pm", "xyz" -> "12:00 pm"
std::string AppendAmPm(const std::string& TimeIn);

}  // namespace ostrel
