#pragma once

// Clock times as they are typed in the field, short and without a thought: what the time box and the
// time question make of them.

#include <string>

namespace ostrel {

/// Makes a proper time of whatever was typed.
///   TimeIn   with an a or p in it: taken if it is a time or date, else noon; without: an hour, with
///            the minutes behind the decimal point, pm for 12 and above and up to 6, am between
///   returns  a text in TimeFormat
///   throws   Failure 13 where the decimals are no minutes
///   example  "7.3" -> "07:30 am", "5.45" -> "05:45 pm", "13" -> "01:00 pm", "xyz" -> "12:00 pm"
std::string AppendAmPm(const std::string& TimeIn);

}  // namespace ostrel
