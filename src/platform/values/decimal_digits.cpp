#include "platform/values/decimal_digits.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>

#include "platform/values/value_failures.h"

namespace ostrel {
namespace {

void DropZerosAtTheEnd(DecimalDigits& number) {
  while (number.Count > 0 && number.Digits[number.Count - 1] == '0') --number.Count;
  if (number.Count == 0) number = DecimalDigits{};
}

/// Adds one to the last digit in use, or makes a 1 of no digits at all.
void Increment(DecimalDigits& number) {
  // Nines become zeros, and zeros at the end are not kept.
  while (number.Count > 0 && number.Digits[number.Count - 1] == '9') --number.Count;
  if (number.Count > 0) {
    ++number.Digits[number.Count - 1];
    return;
  }
  number.Digits[0] = '1';
  number.Count = 1;
  ++number.Exponent;
}

}  // namespace

void DecimalDigits::RoundToPlaces(int places) {
  // Digits that stay; negative where even the first lies beyond the places and rounds to nothing.
  const int kept = Exponent + 1 + places;
  if (kept >= Count) return;
  const bool up = kept >= 0 && Digits[kept] >= '5';
  Count = std::max(kept, 0);
  if (up) {
    Increment(*this);
  } else {
    DropZerosAtTheEnd(*this);
  }
}

DecimalDigits DigitsOf(double number, int significant) {
  assert(significant >= 1 && significant <= DecimalDigits::kMost);
  if (!std::isfinite(number)) throw value_failure::Overflow();
  DecimalDigits result;
  if (number == 0) return result;

  char text[32];  // "d.dddddddddddddde-308" and room to spare
  const auto end = std::to_chars(text, text + sizeof text, std::abs(number),
                                 std::chars_format::scientific, significant - 1)
                       .ptr;
  const char* at = text;
  for (; *at != 'e'; ++at) {
    if (*at != '.') result.Digits[result.Count++] = *at;
  }
  at += at[1] == '+' ? 2 : 1;  // from_chars takes no plus sign
  std::from_chars(at, end, result.Exponent);
  result.Negative = number < 0;
  DropZerosAtTheEnd(result);
  return result;
}

}  // namespace ostrel
