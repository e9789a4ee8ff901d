#pragma once

// Numbers between text and value: the reading of what was typed, and the plain forms in which
// numbers come out where no pattern is asked for.

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrel {

/// The number that a text begins with. Blanks, tabs and line feeds are skipped wherever they stand;
/// a sign, digits with at most one point and an optional exponent are read; reading stops at the
/// first other character, a comma included; a text with no such beginning gives 0.
///   throws   Failure 6 when the number is beyond a double's range
///   example  "8:30" -> 8, "+15" -> 15, "-30" -> -30, "8.5x" -> 8.5, "abc" -> 0
double NumericPrefix(std::string_view text);

/// The number that the whole text spells, blanks at both ends allowed, commas between thousands
/// skipped; this is how a typed fields takes a text.
///   throws   Failure 13 when anything else stands in it, Failure 6 beyond a double's range
double WholeNumberText(std::string_view text);

/// Rounded to a whole number, a tie going to the even neighbour: 12.5 -> 12, 13.5 -> 14.
///   throws   Failure 6 outside 32 bits, or not a number
std::int32_t ToLong(double number);

/// The same held to 16 bits signed.
std::int16_t ToInteger(double number);

/// Shortest plain decimal form, at most 15 significant digits (7 for float), no thousands
/// separator, a 0 before the point of a value under 1, "-0" as 0. Sizes of 1E15 and above, and
/// below 1E-15, come with an exponent, as in 1E+15.
///   throws   Failure 6 for a number that is infinite or none
///   example  127.25 -> "127.25", 0.1 + 0.2 -> "0.3", -9.0 -> "-9"
std::string GeneralText(double number);
std::string GeneralText(float number);

/// GeneralText with one leading blank for a number of 0 or above, and no digit before the point of
/// a value under 1: 3 -> " 3", 0.5 -> " .5", -0.5 -> "-.5".
std::string SignedNumberText(double number);

/// number / divisor.
///   throws   Failure 11 when divisor is 0, Failure 6 beyond a double's range
double Divide(double number, double divisor);

}  // namespace ostrel
