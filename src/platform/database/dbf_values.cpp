#include "platform/database/dbf_values.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <string>

#include "platform/values/calendar.h"

namespace ostrel {

namespace {

constexpr std::string_view kBlanks(" \0\t", 3);  // some writers fill up with zero bytes
constexpr double kCurrencyUnit = 10000;
constexpr int kJulianDayZero = 2415019;  // the Julian day of 30 December 1899
constexpr int kFirstDay = -657434;       // 1 January 100
constexpr int kLastDay = 2958465;        // 31 December 9999
constexpr double kMillisecondsOfDay = 86400000;

std::string_view CutEnd(std::string_view raw) {
  return raw.substr(0, raw.find_last_not_of(kBlanks) + 1);
}

std::string_view CutBlanks(std::string_view raw) {
  const std::size_t begin = raw.find_first_not_of(kBlanks);
  return begin == std::string_view::npos ? std::string_view() : CutEnd(raw.substr(begin));
}

std::uint64_t LittleEndian(std::string_view raw) {
  std::uint64_t number = 0;
  for (std::size_t at = raw.size(); at-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(raw[at]);
  }
  return number;
}

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

std::optional<int> Digits(std::string_view raw) {
  int number = 0;
  for (const char digit : raw) {
    if (!IsDigit(digit)) return std::nullopt;
    number = number * 10 + (digit - '0');
  }
  return number;
}

Value CalendarValue(std::string_view raw) {
  if (raw.size() != 8) return {};
  const auto year = Digits(raw.substr(0, 4));
  const auto month = Digits(raw.substr(4, 2));
  const auto day = Digits(raw.substr(6, 2));
  if (!year || !month || !day) return {};
  const auto days = DayNumber(*year, *month, *day);
  return days ? Value(Moment{static_cast<double>(*days)}) : Value();
}

Value MomentValue(std::string_view raw) {
  if (raw.size() != 8) return {};
  const std::int64_t day = std::int64_t{LittleEndian32(raw.substr(0, 4))} - kJulianDayZero;
  const double time = LittleEndian32(raw.substr(4)) / kMillisecondsOfDay;
  if (day < kFirstDay || day > kLastDay || time < 0 || time >= 1) return {};
  return Moment{static_cast<double>(day) + time};
}

Value LogicalValue(std::string_view raw) {
  constexpr std::string_view yes = "TtYy";
  constexpr std::string_view no = "FfNn";
  if (raw.size() != 1) return {};
  if (yes.find(raw[0]) != std::string_view::npos) return true;
  if (no.find(raw[0]) != std::string_view::npos) return false;
  return {};
}

std::optional<double> BinaryDouble(std::string_view raw) {
  const auto number = std::bit_cast<double>(LittleEndian64(raw));
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<double> DbfNumber(std::string_view raw) {
  std::string_view text = CutBlanks(raw);
  const bool plus = text.starts_with('+');
  if (plus) text.remove_prefix(1);
  const std::string_view digits = text.starts_with('-') && !plus ? text.substr(1) : text;
  // The conversion would take "inf" and "nan" as well.
  if (digits.empty() || (digits[0] != '.' && !IsDigit(digits[0]))) return std::nullopt;
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool IsDbfNumericType(char type) {
  return std::string_view("NFIYB").find(type) != std::string_view::npos;
}

std::optional<double> DbfNumericField(char type, std::string_view raw) {
  if (type == 'N' || type == 'F') return DbfNumber(raw);
  if (type == 'I' && raw.size() == 4) return LittleEndian32(raw);
  if (type == 'Y' && raw.size() == 8) {
    return static_cast<double>(LittleEndian64(raw)) / kCurrencyUnit;
  }
  // In tables older than Visual FoxPro's, type B is a memo, 10 bytes long.
  if (type == 'B' && raw.size() == 8) return BinaryDouble(raw);
  return std::nullopt;
}

Value DbfValue(char type, std::string_view raw, const CodePage& page) {
  switch (type) {
    case 'C':
    case 'V':
      return page.ToUtf8(CutEnd(raw));
    case 'D':
      return CalendarValue(raw);
    case 'T':
      return MomentValue(raw);
    case 'L':
      return LogicalValue(raw);
    default: {
      const auto number = DbfNumericField(type, raw);
      return number ? Value(*number) : Value();
    }
  }
}

std::int32_t LittleEndian32(std::string_view raw) {
  return static_cast<std::int32_t>(LittleEndian(raw));
}

std::int64_t LittleEndian64(std::string_view raw) {
  return static_cast<std::int64_t>(LittleEndian(raw));
}

}  // namespace ostrel
