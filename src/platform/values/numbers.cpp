#include "platform/values/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "platform/values/decimal_digits.h"
#include "platform/values/text.h"
#include "platform/values/value_failures.h"

namespace ostrel {
namespace {

constexpr std::string_view kBlanks = " \t\n";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string WithoutAny(std::string_view text, std::string_view unwanted) {
  std::string rest(text);
  std::erase_if(rest, [=](char c) { return unwanted.find(c) != std::string_view::npos; });
  return rest;
}

/// The power of ten in the exponent part "e-12" of a number; sizes beyond an int count as its end.
int ExponentPart(std::string_view part) {
  if (part.empty()) return 0;
  part.remove_prefix(part.size() > 1 && part[1] == '+' ? 2 : 1);
  int exponent = 0;
  const auto read = std::from_chars(part.data(), part.data() + part.size(), exponent);
  if (read.ec != std::errc::result_out_of_range) return exponent;
  return part.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

/// Whether the number that a double cannot hold is too large, rather than too near to zero.
bool IsTooLarge(std::string_view number) {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::size_t point = std::min(number.find('.'), mark);
  const std::size_t first = number.find_first_of("123456789");
  const auto places = static_cast<long long>(point) - static_cast<long long>(first);
  return places + ExponentPart(number.substr(mark)) > 0;
}

struct LeadingNumber {
  double Number = 0;
  std::size_t Length = 0;  ///< characters used up; 0 when the text begins with no number
};

/// Reads from a text without blanks.
LeadingNumber ReadLeadingNumber(std::string_view text) {
  const bool negative = text.starts_with('-');
  const std::size_t sign = negative || text.starts_with('+') ? 1 : 0;
  const std::string_view digits = text.substr(sign);
  // Anything else could be a second sign or a word such as "inf", which the reader below takes.
  if (digits.empty() || !(IsDigit(digits[0]) || digits[0] == '.')) return {};

  double number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (read.ec == std::errc::invalid_argument) return {};
  const auto length = static_cast<std::size_t>(read.ptr - digits.data());
  if (read.ec == std::errc::result_out_of_range) {
    if (IsTooLarge(digits.substr(0, length))) throw value_failure::Overflow();
    // Too near to zero for a double is zero; nobody is paid by such a number.
    number = 0;
  }
  return {negative && number != 0 ? -number : number, sign + length};
}

/// Whether commas stand where they part thousands and nowhere else: "1,234.5", "-12,345,678".
bool CommasPartThousands(std::string_view text) {
  text.remove_prefix(text.starts_with('-') || text.starts_with('+') ? 1 : 0);
  const std::string_view whole = text.substr(0, text.find_first_of(".eE"));
  if (text.find(',', whole.size()) != std::string_view::npos) return false;
  const std::size_t lead = whole.find(',');
  if (lead == 0 || lead > 3 || (whole.size() - lead) % 4 != 0) return false;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if ((whole[i] == ',') != (i >= lead && (i - lead) % 4 == 0)) return false;
  }
  return true;
}

std::string PlainText(const DecimalDigits& number) {
  const std::string_view digits = number.Text();
  std::string text = number.Negative ? "-" : "";
  if (number.Exponent < 0) {
    text.append("0.").append(static_cast<std::size_t>(-number.Exponent - 1), '0').append(digits);
    return text;
  }
  const auto whole = static_cast<std::size_t>(number.Exponent) + 1;
  text.append(digits.substr(0, whole));
  if (digits.size() > whole) return text.append(".").append(digits.substr(whole));
  return text.append(whole - digits.size(), '0');
}

std::string TextWithExponent(const DecimalDigits& number) {
  std::string text = number.Negative ? "-" : "";
  text += number.Digits[0];
  if (number.Count > 1) text.append(".").append(number.Text().substr(1));
  return text.append(number.Exponent < 0 ? "E-" : "E+")
      .append(std::to_string(std::abs(number.Exponent)));
}

std::string GeneralTextOf(const DecimalDigits& number) {
  constexpr int kLargestPlain = 14;
  constexpr int kSmallestPlain = -15;
  const bool plain = number.Exponent >= kSmallestPlain && number.Exponent <= kLargestPlain;
  return plain ? PlainText(number) : TextWithExponent(number);
}

/// throws  Failure 6 when the rounded number does not fit
template <class Whole>
Whole RoundedTo(double number) {
  using Limits = std::numeric_limits<Whole>;
  // Ties go to the even neighbour, as the processor does it by itself; the program never sets
  // another way.
  const double rounded = std::nearbyint(number);
  // Asked this way round, a number that is none does not pass.
  if (!(rounded >= Limits::min() && rounded <= Limits::max())) throw value_failure::Overflow();
  return static_cast<Whole>(rounded);
}

}  // namespace

double NumericPrefix(std::string_view text) {
  constexpr std::string_view numberCharacters = "0123456789.+-eE";
  std::string number;  // no more than that is looked at: a list of numbers is long
  for (const char c : text) {
    if (kBlanks.find(c) != std::string_view::npos) continue;
    if (numberCharacters.find(c) == std::string_view::npos) break;
    number += c;
  }
  return ReadLeadingNumber(number).Number;
}

double WholeNumberText(std::string_view text) {
  std::string number = Trim(text);
  if (number.find(',') != std::string::npos) {
    if (!CommasPartThousands(number)) throw value_failure::TypeMismatch();
    number = WithoutAny(number, ",");
  }
  const LeadingNumber read = ReadLeadingNumber(number);
  if (read.Length == 0 || read.Length != number.size()) throw value_failure::TypeMismatch();
  return read.Number;
}

std::int32_t ToLong(double number) { return RoundedTo<std::int32_t>(number); }
std::int16_t ToInteger(double number) { return RoundedTo<std::int16_t>(number); }

std::string GeneralText(double number) { return GeneralTextOf(DigitsOf(number, 15)); }
std::string GeneralText(float number) { return GeneralTextOf(DigitsOf(number, 7)); }

std::string SignedNumberText(double number) {
  std::string text = GeneralText(number);
  if (text[0] != '-') text.insert(0, 1, ' ');
  if (text.compare(1, 2, "0.") == 0) text.erase(1, 1);
  return text;
}

double Divide(double number, double divisor) {
  if (divisor == 0) throw value_failure::DivisionByZero();
  const double quotient = number / divisor;
  if (!std::isfinite(quotient)) throw value_failure::Overflow();
  return quotient;
}

}  // namespace ostrel
