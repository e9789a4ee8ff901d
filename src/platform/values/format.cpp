#include "platform/values/format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "platform/values/dates.h"
#include "platform/values/decimal_digits.h"
#include "platform/values/moment_text.h"
#include "platform/values/numbers.h"
#include "platform/values/value_failures.h"

namespace ostrel {
namespace {

/// What a money pattern asks for beyond the point and two decimals at most.
struct MoneyForm {
  bool LeadingBlank = false;
  bool WholeDigit = false;   ///< a 0 before the point of a value under 1
  bool Commas = false;       ///< between thousands
  bool AllDecimals = false;  ///< two of them always, otherwise none that is a zero at the end
};

using DateWriter = std::string (*)(const ClockTime&);

/// One pattern; the general form has neither.
struct Pattern {
  std::string_view Text;
  std::optional<MoneyForm> Money;
  DateWriter Date = nullptr;
};

constexpr int kPlaces = 2;

/// The digit at the place of ten to `power`, zeros going on at both ends.
char DigitAt(const DecimalDigits& number, int power) {
  const int index = number.Exponent - power;
  return index >= 0 && index < number.Count ? number.Digits[index] : '0';
}

std::string WriteMoney(double value, const MoneyForm& form) {
  DecimalDigits number = DigitsOf(value, DecimalDigits::kMost);
  number.RoundToPlaces(kPlaces);
  // Without digits the number is zero; with a negative exponent it begins behind the point.
  const bool underOne = number.Count == 0 || number.Exponent < 0;
  const int highest = underOne ? 0 : number.Exponent;

  std::string text;
  text.reserve(static_cast<std::size_t>(highest) / 3 * 4 + 8);
  if (form.LeadingBlank) text += ' ';
  if (number.Negative) text += '-';
  for (int power = underOne && !form.WholeDigit ? -1 : highest; power >= 0; --power) {
    text += DigitAt(number, power);
    if (form.Commas && power > 0 && power % 3 == 0) text += ',';
  }
  text += '.';
  const int used = number.Count - 1 - number.Exponent;
  const int decimals = form.AllDecimals ? kPlaces : std::clamp(used, 0, kPlaces);
  for (int place = 1; place <= decimals; ++place) text += DigitAt(number, -place);
  return text;
}

constexpr MoneyForm kPlain{.WholeDigit = true, .AllDecimals = true};

constexpr std::array<Pattern, 14> kPatterns = {{
    {"#0.00", kPlain},
    {"Fixed", kPlain},
    {"#.00", MoneyForm{.AllDecimals = true}},
    {"#,##0.00", MoneyForm{.WholeDigit = true, .Commas = true, .AllDecimals = true}},
    {" #,###.##", MoneyForm{.LeadingBlank = true, .Commas = true}},
    {" #,###.00", MoneyForm{.LeadingBlank = true, .Commas = true, .AllDecimals = true}},
    {"hh:mm am/pm", {}, OfTwelveHours},
    {"hh:mm", {}, OfTwentyFourHours},
    {"mm/dd/yy", {}, MonthDayAndYear},
    {"mm/dd", {}, MonthAndDay},
    {"dddd", {}, Weekday},
    {"ddddd", {}, ShortDate},
    {"General Date", {}, GeneralDate},
    {"", {}},
}};

const Pattern& Find(std::string_view text) {
  const auto* pattern = std::find_if(kPatterns.begin(), kPatterns.end(),
                                     [=](const Pattern& one) { return one.Text == text; });
  if (pattern == kPatterns.end()) {
    throw value_failure::InvalidCall();
  }
  return *pattern;
}

std::string WithPattern(double number, const Pattern& pattern) {
  if (pattern.Money) return WriteMoney(number, *pattern.Money);
  return pattern.Date != nullptr ? pattern.Date(OnTheClock(Moment{number})) : GeneralText(number);
}

std::string WithPattern(const std::string& text, const Pattern& pattern) {
  if (pattern.Date != nullptr) {
    const std::optional<Moment> moment = ReadMoment(text);
    return moment ? WithPattern(moment->Days, pattern) : text;
  }
  if (!pattern.Money) return text;
  try {
    return WithPattern(WholeNumberText(text), pattern);
    // A text that is no number shows as it is: the cell must not hide what stands in the store.
  } catch (const Failure&) {
    return text;
  }
}

}  // namespace

std::string Format(double number, std::string_view pattern) {
  return WithPattern(number, Find(pattern));
}

std::string Format(Moment moment, std::string_view pattern) {
  return WithPattern(moment.Days, Find(pattern.empty() ? "General Date" : pattern));
}

std::string Format(const Value& value, std::string_view pattern) {
  const Pattern& found = Find(pattern);
  if (value.IsNull()) return {};
  if (value.IsText()) return WithPattern(value.Characters(), found);
  return pattern.empty() ? value.ToText() : WithPattern(value.NumberOrZero(), found);
}

}  // namespace ostrel
