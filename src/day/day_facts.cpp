#include "day/day_facts.h"

#include <algorithm>
#include <cmath>

#include "frame/app_state.h"
#include "platform/values/calendar.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

constexpr int kMinutesPerHour = 60;
constexpr int kMinutesPerDay = 24 * kMinutesPerHour;

}  // namespace

bool DayClock::SameMinute(const DayClock& other) const {
  return TimeClock == other.TimeClock && ClockOut == other.ClockOut &&
         DayOf(Now) == DayOf(other.Now) && MinuteOf(Now) == MinuteOf(other.Now);
}

const OfficeEmployee* Office::Find(double number) const {
  const auto found = std::lower_bound(
      Employees.begin(), Employees.end(), number,
      [](const OfficeEmployee& employee, double wanted) { return employee.Number < wanted; });
  return found != Employees.end() && found->Number == number ? &*found : nullptr;
}

std::string NumberText(double number) { return GeneralText(static_cast<float>(number)); }

std::string TimeText(int minute) {
  return Format(static_cast<double>(minute) / kMinutesPerDay, TimeFormat);
}

int MinuteOf(Moment moment) {
  const std::string clock = Format(moment, "hh:mm");
  return std::stoi(clock.substr(0, 2)) * kMinutesPerHour + std::stoi(clock.substr(3));
}

std::optional<double> Hundredths(double number) {
  if (!std::isfinite(number)) return {};
  return NumericPrefix(Format(number, "#0.00"));
}

double HundredthsOrZero(double number) { return Hundredths(number).value_or(0); }

std::string MoneyText(double amount) { return Format(HundredthsOrZero(amount), "#0.00"); }

std::string QuantityText(const DayLine& line) {
  return GeneralText(line.Quantity) + " " + (line.Unit.empty() ? "pieces" : line.Unit);
}

std::string UnitKey(std::string_view unit) { return UpperCase(Trim(unit)); }

}  // namespace ostrel
