#pragma once

// Arithmetic on clock times held as short texts, and the box that confirms or changes one.

#include <cstdint>
#include <string>

namespace ostrel {

/// Hours between two clock times; the date plays no part.
///   StartTime, StopTime  time texts, "08:00 am"
///   returns              hours to two decimals; the size of the difference if StopTime is earlier;
///                        0 where a text is no time and the operator ignores the report
///   example              "07:00 am", "11:30 am" -> 4.5; "10:00 pm", "02:00 am" -> 20
double HoursDiff(const std::string& StartTime, const std::string& StopTime);

/// A clock time moved by some minutes, past midnight to the next day's or back to the day's before.
///   OldTime   a time text; rewritten in the pattern "hh:mm"
///   DeltaMin  minutes; with the minutes of OldTime they must fit 16 bits
///   returns   a text in TimeFormat; the time as it was where the operator ignores a failure
///   example   "11:50 pm", 20 -> "12:10 am"
std::string AdjustTime(std::string& OldTime, double DeltaMin);

// What closed the time question, by the numbers of its buttons.
inline constexpr std::int16_t kTimeCancelled = 2;
inline constexpr std::int16_t kTimeConfirmed = 6;
inline constexpr std::int16_t kTimeChanged = 7;

/// Asks whether the offered time will do. No leads to a box for another time, or for minutes to move
/// it by, such as +15 or -90; nothing that is typed there is refused, a bad answer means the offered
/// time.
///   DefaultT   the offered time; rewritten by AdjustTime when it is moved
///   TimeOut    out: the time; left as it was on Cancel, and when the answer holds a date
///   ReturnVal  out: one of the three numbers above
void AskTime(const std::string& PromptT, std::string& DefaultT, const std::string& Hdg,
             std::string& TimeOut, std::int16_t& ReturnVal);

}  // namespace ostrel
