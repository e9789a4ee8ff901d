#include "platform/values/moment_text.h"

#include <array>
#include <cmath>

#include "platform/values/calendar.h"
#include "platform/values/value_failures.h"

namespace ostrel {
namespace {

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

}  // namespace

ClockTime OnTheClock(Moment moment) {
  constexpr int kSecondsPerDay = 86400;
  constexpr double kBeforeFirstDay = -657435;
  constexpr double kBeyondLastDay = 2958466 - 0.5 / kSecondsPerDay;  // would round to a day more
  const double days = moment.Days;
  // Asked this way round, a number that is none does not pass.
  if (!(days > kBeforeFirstDay && days < kBeyondLastDay)) throw value_failure::Overflow();
  // Towards zero, not down: days before day 0 count their time of day upwards like all others.
  const double day = std::trunc(days);
  const auto second = static_cast<int>(std::lround(std::abs(days - day) * kSecondsPerDay));
  const int ofDay = second % kSecondsPerDay;
  return {static_cast<int>(day) + second / kSecondsPerDay, ofDay / 3600, ofDay / 60 % 60,
          ofDay % 60};
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

}  // namespace ostrel
