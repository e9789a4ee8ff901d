#pragma once

// The decimal digits of a number, as both the plain forms (numbers.h) and the money patterns
// (format.h) start from them. Knows no locale and allocates nothing.

#include <string_view>

namespace ostrel {

/// A number as digits d1 d2 d3 ... with the value d1.d2d3... times ten to the Exponent.
struct DecimalDigits {
  static constexpr int kMost = 15;  ///< significant digits that every double holds

  bool Negative = false;  ///< never for zero
  int Exponent = 0;       ///< -324 to 308; 0 for zero
  int Count = 0;          ///< digits in use, without zeros at the end; none for zero
  char Digits[kMost] = {};

  std::string_view Text() const { return {Digits, static_cast<std::size_t>(Count)}; }

  /// Drops everything behind the given number of decimal places; a tie goes away from zero.
  void RoundToPlaces(int places);
};

/// The number rounded to `significant` digits, 1 to 15, correctly from its exact value.
///   throws  Failure 6 for an infinite number or none at all
DecimalDigits DigitsOf(double number, int significant);

}  // namespace ostrel
