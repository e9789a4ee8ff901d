#include "platform/values/calendar.h"

#include <chrono>
#include <cmath>

namespace ostrel {
namespace {

constexpr int kUnixEpoch = 25569;  // 1 January 1970 as a day number

}  // namespace

std::optional<int> DayNumber(int year, int month, int day) {
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return {};
  const std::chrono::year_month_day date{std::chrono::year(year),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok()) return std::nullopt;
  return static_cast<int>(std::chrono::sys_days(date).time_since_epoch().count()) + kUnixEpoch;
}

CivilDate CivilFromDays(int days) {
  const std::chrono::year_month_day date{
      std::chrono::sys_days(std::chrono::days(days - kUnixEpoch))};
  return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day()))};
}

double DayOf(Moment moment) { return std::floor(moment.Days); }

}  // namespace ostrel
