#include "platform/values/clock.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <utility>

#include "platform/values/calendar.h"

namespace ostrel {
namespace {

constexpr double kSecondsPerDay = 86400;

std::tm LocalTime(std::time_t seconds) {
  std::tm local{};
// The plain localtime keeps its answer in one place for the whole process, the toolkit's threads
// included.
#ifdef _WIN32
  localtime_s(&local, &seconds);
#else
  localtime_r(&seconds, &local);
#endif
  return local;
}

Moment ComputerClock() {
  using std::chrono::system_clock;
  const auto now = system_clock::now();
  const auto second = std::chrono::floor<std::chrono::seconds>(now);
  const double ofSecond = std::chrono::duration<double>(now - second).count();
  return {LocalMoment(system_clock::to_time_t(second)).Days + ofSecond / kSecondsPerDay};
}

std::function<Moment()>& ClockInUse() {
  static std::function<Moment()> clock = ComputerClock;
  return clock;
}

}  // namespace

Moment LocalMoment(std::time_t seconds) {
  const std::tm local = LocalTime(seconds);
  // A leap second counts as the second before it, so that a day never has more than 86400.
  const int ofDay = local.tm_hour * 3600 + local.tm_min * 60 + std::min(local.tm_sec, 59);
  const int days = DayNumber(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value_or(0);
  return {days + ofDay / kSecondsPerDay};
}

Moment Now() {
  // A moment is exact to less than a microsecond; a whole second may lie that far below itself.
  constexpr double kExactness = 1e-5;  // seconds
  const double days = ClockInUse()().Days;
  const double day = std::floor(days);
  return {day + std::floor((days - day) * kSecondsPerDay + kExactness) / kSecondsPerDay};
}

void SetClock(std::function<Moment()> clock) {
  if (!clock) clock = ComputerClock;
  ClockInUse() = std::move(clock);
}

double SecondsSinceMidnight() {
  const double days = ClockInUse()().Days;
  return std::abs(days - std::trunc(days)) * kSecondsPerDay;
}

}  // namespace ostrel
