// Texts as typed, through every reader, and numbers of any bit pattern through every pattern.

#include <cmath>
#include <cstring>

#include "fuzz.h"
#include "platform/values/clock.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

constexpr const char* kPatterns[] = {
    "#0.00", "Fixed", "#.00", "#,##0.00", " #,###.##", " #,###.00",    "hh:mm am/pm",
    "hh:mm", "dddd",  "",     "mm/dd",    "mm/dd/yy",  "General Date", "ddddd"};

template <class Call>
auto Read(Call call) {
  return Attempt({failure_number::kOverflow, failure_number::kTypeMismatch}, call);
}

void CheckNumber(double number) {
  for (const char* pattern : kPatterns) {
    const auto text = Read([&] { return Format(number, pattern); });
    Require(!text || text->size() < 500);
  }
  const auto general = Read([&] { return GeneralText(number); });
  Require(general.has_value() == std::isfinite(number));
  if (!general) return;
  // Fifteen digits of the largest numbers may round up beyond them.
  const auto back = Read([&] { return WholeNumberText(*general); });
  Require(back ? GeneralText(*back) == *general : std::abs(number) > 1.7976931348623e308);
  Require(!back || std::abs(*back - number) <= std::abs(number) * 1e-14 + 5e-324);
  Require(Read([&] { return NumericPrefix(*general); }) == back);
  const auto money = Read([&] { return WholeNumberText(Format(number, "#,##0.00")); });
  Require(!money || std::abs(*money - number) <= 0.005 + std::abs(number) * 1e-14);
}

void CheckMoment(std::string_view text) {
  const auto moment = ReadMoment(text);
  Require(moment.has_value() == IsDate(text));
  const auto time = Read([&] { return TimeValue(text); });
  const auto date = Read([&] { return DateValue(text); });
  Require(moment.has_value() == time.has_value() && moment.has_value() == date.has_value());
  if (!moment) return;
  Require(*time >= 0 && *time < 1 && *date == std::trunc(moment->Days));
  Require(MomentFrom(Format(*moment, "General Date")) == *moment);
  Require(TimeValue(Format(*time, "hh:mm am/pm")) <= *time);
}

}  // namespace

void Try(std::string_view text) {
  SetClock([] { return Moment{38152.5}; });
  CheckMoment(text);
  if (const auto prefix = Read([&] { return NumericPrefix(text); })) CheckNumber(*prefix);
  const auto whole = Read([&] { return WholeNumberText(text); });
  Require(!whole || std::isfinite(*whole));
  for (const char* pattern : kPatterns) Format(Value(std::string(text)), pattern);
  Require(LengthOf(LeftOf(text, 5)) == std::min<std::size_t>(LengthOf(text), 5));
  Require(SameText(UpperCase(text), LowerCase(text)));
  double number = 0;
  if (text.size() != sizeof number) return;
  std::memcpy(&number, text.data(), sizeof number);
  CheckNumber(number);
}

}  // namespace ostrel
