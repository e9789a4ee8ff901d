#include "platform/values/dates.h"

#include "platform/values/calendar.h"
#include "platform/values/clock.h"
#include "platform/values/value_failures.h"

namespace ostrel {
namespace {

constexpr int kSecondsPerDay = 86400;

/// What a text holds; at least one of the two.
struct Reading {
  std::optional<int> Day;     ///< day number
  std::optional<int> Second;  ///< of the day, 0 to 86399
};

/// Takes the parts of a date or time off the front of a text.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  void SkipBlanks() {
    const std::size_t blanks = rest_.find_first_not_of(' ');
    rest_.remove_prefix(blanks == std::string_view::npos ? rest_.size() : blanks);
  }

  bool AtEnd() const { return rest_.empty(); }

  /// A separator with any blanks around it; leaves everything in place when it is another.
  bool TakeSeparator(char separator) {
    const std::string_view before = rest_;
    SkipBlanks();
    if (!rest_.starts_with(separator)) {
      rest_ = before;
      return false;
    }
    rest_.remove_prefix(1);
    SkipBlanks();
    return true;
  }

  /// An unsigned number of 1 to 4 digits; LastDigits() tells how many.
  std::optional<int> TakeNumber() {
    int number = 0;
    digits_ = 0;
    while (!rest_.empty() && rest_[0] >= '0' && rest_[0] <= '9') {
      if (++digits_ > 4) return std::nullopt;
      number = number * 10 + (rest_[0] - '0');
      rest_.remove_prefix(1);
    }
    return digits_ == 0 ? std::nullopt : std::optional(number);
  }

  int LastDigits() const { return digits_; }

  /// A number of 1 or 2 digits from `least` to `most`.
  std::optional<int> TakeNumber(int least, int most) {
    const std::optional<int> number = TakeNumber();
    const bool fits = number && digits_ <= 2 && *number >= least && *number <= most;
    return fits ? number : std::nullopt;
  }

  /// 'a' or 'p' for the word that says which half of the day, 0 where none stands.
  char TakeHalfOfDay() {
    SkipBlanks();
    const char half = TakeLetter("aApP");
    if (half != 0) TakeLetter("mM");
    return half;
  }

 private:
  char TakeLetter(std::string_view choices) {
    if (rest_.empty() || choices.find(rest_[0]) == std::string_view::npos) return 0;
    const char lower = static_cast<char>(rest_[0] | 0x20);
    rest_.remove_prefix(1);
    return lower;
  }

  std::string_view rest_;
  int digits_ = 0;
};

int PresentYear() { return CivilFromDays(static_cast<int>(DayOf(Now()))).Year; }

/// The year of the sliding window that ends in the two digits.
int YearInWindow(int twoDigits) {
  constexpr int kYearsBack = 80;
  const int first = PresentYear() - kYearsBack;
  const int ahead = (twoDigits - first) % 100;
  return first + (ahead < 0 ? ahead + 100 : ahead);
}

std::optional<int> TakeYear(Scanner& text) {
  const std::optional<int> year = text.TakeNumber();
  if (!year || text.LastDigits() == 3) return std::nullopt;
  return text.LastDigits() <= 2 ? YearInWindow(*year) : *year;
}

/// Month, day and perhaps a year, parted by one and the same separator. A first number above 12 is
/// refused rather than read as the day: a guess could move pay to another day.
std::optional<int> ReadDate(Scanner& text) {
  const std::optional<int> month = text.TakeNumber(1, 12);
  if (!month) return std::nullopt;
  const char separator = text.TakeSeparator('/') ? '/' : '-';
  if (separator == '-' && !text.TakeSeparator('-')) return std::nullopt;
  const std::optional<int> day = text.TakeNumber(1, 31);
  if (!day) return std::nullopt;
  const std::optional<int> year = text.TakeSeparator(separator) ? TakeYear(text) : PresentYear();
  return year ? DayNumber(*year, *month, *day) : std::nullopt;
}

/// The hour of the day; nothing for a morning hour above 12. A pm behind an hour above 12 adds
/// nothing, so that an hour counted to 23 may carry one.
std::optional<int> HourOfDay(int hour, char half) {
  if (half == 'a') return hour > 12 ? std::nullopt : std::optional(hour % 12);
  return half == 'p' && hour < 12 ? hour + 12 : hour;
}

std::optional<int> ReadTime(Scanner& text) {
  const std::optional<int> hour = text.TakeNumber(0, 23);
  if (!hour) return std::nullopt;
  const bool colon = text.TakeSeparator(':');
  const bool point = !colon && text.TakeSeparator('.');
  const std::optional<int> minute = colon || point ? text.TakeNumber(0, 59) : 0;
  if (!minute) return std::nullopt;
  const std::optional<int> second = colon && text.TakeSeparator(':') ? text.TakeNumber(0, 59) : 0;
  if (!second) return std::nullopt;
  const char half = text.TakeHalfOfDay();
  if (!colon && half == 0) return std::nullopt;
  const std::optional<int> ofDay = HourOfDay(*hour, half);
  return ofDay ? std::optional((*ofDay * 60 + *minute) * 60 + *second) : std::nullopt;
}

std::optional<Reading> Read(std::string_view whole) {
  Scanner text(whole);
  text.SkipBlanks();
  Reading result;
  Scanner behindDate = text;
  result.Day = ReadDate(behindDate);
  if (result.Day) {
    text = behindDate;
    text.SkipBlanks();
  }
  if (!result.Day || !text.AtEnd()) {
    result.Second = ReadTime(text);
    if (!result.Second) return std::nullopt;
    text.SkipBlanks();
  }
  return text.AtEnd() ? std::optional(result) : std::nullopt;
}

Reading MustRead(std::string_view text) {
  const std::optional<Reading> reading = Read(text);
  if (!reading) throw value_failure::TypeMismatch();
  return *reading;
}

double FractionOf(const Reading& reading) {
  return static_cast<double>(reading.Second.value_or(0)) / kSecondsPerDay;
}

Moment MomentOf(const Reading& reading) {
  const int day = reading.Day.value_or(0);
  // The fraction's size is the time of day, on days before day 0 too.
  return {day < 0 ? day - FractionOf(reading) : day + FractionOf(reading)};
}

}  // namespace

std::optional<Moment> ReadMoment(std::string_view text) {
  const std::optional<Reading> reading = Read(text);
  return reading ? std::optional(MomentOf(*reading)) : std::nullopt;
}

bool IsDate(std::string_view text) { return Read(text).has_value(); }

double TimeValue(std::string_view text) { return FractionOf(MustRead(text)); }

double DateValue(std::string_view text) { return MustRead(text).Day.value_or(0); }

Moment MomentFrom(std::string_view text) { return MomentOf(MustRead(text)); }

}  // namespace ostrel
