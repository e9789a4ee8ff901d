// Texts as typed, through every reader, and numbers of any bit pattern through every pattern.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "platform/failure.h"
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

void Require(bool holds) {
  if (!holds) std::abort();
}

/// What the call gives, or nothing when it fails in one of the ways that it may.
template <class Call>
auto Attempt(Call call) -> std::optional<decltype(call())> {
  try {
    return call();
  } catch (const Failure& failure) {
    Require(failure.Number == failure_number::kOverflow ||
            failure.Number == failure_number::kTypeMismatch);
    return std::nullopt;
  }
}

void CheckNumber(double number) {
  for (const char* pattern : kPatterns) {
    const auto text = Attempt([&] { return Format(number, pattern); });
    Require(!text || text->size() < 500);
  }
  const auto general = Attempt([&] { return GeneralText(number); });
  Require(general.has_value() == std::isfinite(number));
  if (!general) return;
  // Fifteen digits of the largest numbers may round up beyond them.
  const auto back = Attempt([&] { return WholeNumberText(*general); });
  Require(back ? GeneralText(*back) == *general : std::abs(number) > 1.7976931348623e308);
  Require(!back || std::abs(*back - number) <= std::abs(number) * 1e-14 + 5e-324);
  Require(Attempt([&] { return NumericPrefix(*general); }) == back);
  const auto money = Attempt([&] { return WholeNumberText(Format(number, "#,##0.00")); });
  Require(!money || std::abs(*money - number) <= 0.005 + std::abs(number) * 1e-14);
}

void CheckMoment(std::string_view text) {
  const auto moment = ReadMoment(text);
  Require(moment.has_value() == IsDate(text));
  const auto time = Attempt([&] { return TimeValue(text); });
  const auto date = Attempt([&] { return DateValue(text); });
  Require(moment.has_value() == time.has_value() && moment.has_value() == date.has_value());
  if (!moment) return;
  Require(*time >= 0 && *time < 1 && *date == std::trunc(moment->Days));
  Require(MomentFrom(Format(*moment, "General Date")) == *moment);
  Require(TimeValue(Format(*time, "hh:mm am/pm")) <= *time);
}

void CheckText(std::string_view text) {
  CheckMoment(text);
  const auto prefix = Attempt([&] { return NumericPrefix(text); });
  if (prefix) CheckNumber(*prefix);
  const auto whole = Attempt([&] { return WholeNumberText(text); });
  Require(!whole || std::isfinite(*whole));
  for (const char* pattern : kPatterns) Format(Value(std::string(text)), pattern);
  Require(LengthOf(LeftOf(text, 5)) == std::min<std::size_t>(LengthOf(text), 5));
  Require(SameText(UpperCase(text), LowerCase(text)));
}

}  // namespace
}  // namespace ostrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ostrel::SetClock([] { return ostrel::Moment{38152.5}; });
  ostrel::CheckText({reinterpret_cast<const char*>(data), size});
  double number = 0;
  if (size == sizeof number) {
    std::memcpy(&number, data, sizeof number);
    ostrel::CheckNumber(number);
  }
  return 0;
}
