#pragma once

// The standard hourly rate. A line paid at it carries a mark in place of a rate, because only the
// office knows what each employee's standard rate is.

namespace ostrel {

/// The rate that marks it in the store; it is no amount.
inline constexpr double kStdRate = -9;
/// The same as a lookup gives it to a box.
inline constexpr const char* kStdRateText = "-9";
/// The word that stands for it, in the rate box and in the grid.
inline constexpr const char* kStdRateWord = "Std Rate";

}  // namespace ostrel
