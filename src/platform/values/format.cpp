#include "platform/values/format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "platform/values/dates.h"
#include "platform/values/decimal_digits.h"
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

/// A moment on the clock, rounded to the nearest second.
struct ClockTime {
  int Day;
  int Hour;    ///< 0 to 23
  int Minute;  ///< 0 to 59
  int Second;  ///< 0 to 59
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

/// throws  Failure 6 outside the calendar, which runs from the year 100 to 9999
ClockTime OnTheClock(double days) {
  constexpr int kSecondsPerDay = 86400;
  constexpr double kBeforeFirstDay = -657435;
  constexpr double kBeyondLastDay = 2958466 - 0.5 / kSecondsPerDay;  // would round to a day more
  if (!(days > kBeforeFirstDay && days < kBeyondLastDay)) throw value_failure::Overflow();
  const double day = std::trunc(days);
  const auto second = static_cast<int>(std::lround(std::abs(days - day) * kSecondsPerDay));
  const int ofDay = second % kSecondsPerDay;
  return {static_cast<int>(day) + second / kSecondsPerDay, ofDay / 3600, ofDay / 60 % 60,
          ofDay % 60};
}

void AppendTwoDigits(std::string& text, int number) {
  text += static_cast<char>('0' + number / 10 % 10);
  text += static_cast<char>('0' + number % 10);
}

int OnTwelveHours(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

std::string HourAndMinute(int hour, int minute) {
  std::string text;
  AppendTwoDigits(text, hour);
  text += ':';
  AppendTwoDigits(text, minute);
  return text;
}

std::string OfTwentyFourHours(const ClockTime& time) {
  return HourAndMinute(time.Hour, time.Minute);
}

std::string OfTwelveHours(const ClockTime& time) {
  return HourAndMinute(OnTwelveHours(time.Hour), time.Minute) + (time.Hour < 12 ? " am" : " pm");
}

std::string MonthAndDay(const ClockTime& time) {
  const CivilDate date = CivilFromDays(time.Day);
  std::string text;
  AppendTwoDigits(text, date.Month);
  text += '/';
  AppendTwoDigits(text, date.Day);
  return text;
}

std::string MonthDayAndYear(const ClockTime& time) {
  std::string text = MonthAndDay(time) + '/';
  AppendTwoDigits(text, CivilFromDays(time.Day).Year);
  return text;
}

std::string Weekday(const ClockTime& time) {
  static constexpr std::array<const char*, 7> kNames = {
      "Saturday", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday"};
  return kNames[static_cast<std::size_t>((time.Day % 7 + 7) % 7)];  // day 0 was a Saturday
}

std::string ShortDate(const ClockTime& time) {
  const CivilDate date = CivilFromDays(time.Day);
  std::string text = std::to_string(date.Month) + '/' + std::to_string(date.Day) + '/';
  AppendTwoDigits(text, date.Year / 100);
  AppendTwoDigits(text, date.Year);
  return text;
}

std::string GeneralDate(const ClockTime& time) {
  std::string text = ShortDate(time) + ' ' + std::to_string(OnTwelveHours(time.Hour)) + ':';
  AppendTwoDigits(text, time.Minute);
  text += ':';
  AppendTwoDigits(text, time.Second);
  return text + (time.Hour < 12 ? " AM" : " PM");
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
  return pattern.Date != nullptr ? pattern.Date(OnTheClock(number)) : GeneralText(number);
}

std::string WithPattern(const std::string& text, const Pattern& pattern) {
  if (pattern.Date != nullptr) {
    const std::optional<Moment> moment = ReadMoment(text);
    return moment ? WithPattern(moment->Days, pattern) : text;
  }
  if (!pattern.Money) return text;
  try {
    return WithPattern(WholeNumberText(text), pattern);
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
