// Texts, numbers, dates and times between what people type and what the store holds.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/values/calendar.h"
#include "platform/values/clock.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "platform/values/value.h"
#include "support/failure_number.h"

namespace ostrel {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

std::string Megabyte(char c) { return std::string(1 << 20, c); }

TEST(Text, IgnoresTheCaseOfAsciiAloneAndCountsCharacters) {
  EXPECT_EQ(UpperCase("std rate \xC3\xA4z{@["), "STD RATE \xC3\xA4Z{@[");
  EXPECT_TRUE(SameText("Prin1234.MDB", "pRIN1234.mdb"));
  EXPECT_FALSE(SameText("Prin", "Prin1") || SameText("[", "{") || SameText("\xC3\xA4", "\xC3\x84"));
  const std::string mixed = "a\xC3\xB1\xE2\x82\xAC\xF0\x9F\x98\x80z";  // 1, 2, 3, 4, 1 bytes
  EXPECT_EQ(LengthOf(mixed), 5U);
  const std::size_t bytes[] = {0, 1, 3, 6, 10, 11, 11};
  for (std::size_t n = 0; n < std::size(bytes); ++n) {
    EXPECT_EQ(LeftOf(mixed, n), mixed.substr(0, bytes[n])) << n;
  }
  EXPECT_EQ(Trim("  a b\t ") + Trim("   "), "a b\t");
}

TEST(Numbers, ReadsThePrefix) {
  const std::pair<double, std::vector<std::string>> cases[] = {
      {0, {"abc", "", "e5", "+-5", "-.e5", "inf", "\r8", "0x10", "1e-400", "0e99999999"}},
      {0, {"0." + Megabyte('0') + "7"}},
      {8, {"8:30", "\t\n8", "8.", "0" + Megabyte(' ') + "8", Megabyte('0') + "8"}},
      {100, {"1 e 2", "1E+2", "+1 0 0", "1000e-1x"}},
      {-30, {"-30", "- 3 0", "-30.0.5", "-3e1e1", "-30,5", "-30e+"}},
      {1.0 / 3, {"0." + Megabyte('3')}}};
  for (const auto& [number, texts] : cases) {
    for (const std::string& text : texts) {
      EXPECT_EQ(NumericPrefix(text), number) << text.substr(0, 40);
    }
  }
  EXPECT_FALSE(std::signbit(NumericPrefix("-0")));
  for (const auto& text : {std::string("-1e309x"), Megabyte('9'), Megabyte('1') + "e5"}) {
    EXPECT_EQ(NumberOf([&] { NumericPrefix(text); }), 6) << text.substr(0, 40);
  }
}

TEST(Numbers, ReadsAWholeTextOrRefusesIt) {
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"8.5", {"8.5", " +8.50 ", "85E-1"}},
      {"-1234567", {"-1,234,567", " -1234567", "-1,234,567.00"}},
      {"!6", {"1e999"}},
      {"!13",
       {"", " ", "8.5x", "- 5", "1 2", "1,50", ",5", "1,2345", "12,34,567", "1234,567",
        "1,000.5,000", "1,", "inf", "8:30", "06/14/04", "--5", "$5"}}};
  for (const auto& [outcome, texts] : cases) {
    for (const char* text : texts) {
      EXPECT_EQ(OutcomeOf([&] { return GeneralText(WholeNumberText(text)); }), outcome) << text;
    }
  }
}

/// What each of the readings makes of one number: "0.3| .3".
std::string Joined(const std::vector<std::function<std::string()>>& readings) {
  std::string all;
  for (const auto& reading : readings) all += (all.empty() ? "" : "|") + OutcomeOf(reading);
  return all;
}

TEST(Numbers, AreWrittenAndRoundedWithinTheSize) {
  const std::pair<double, const char*> cases[] = {
      // as text, with a sign's place, long, integer
      {0.1 + 0.2, "0.3| .3|0|0"},
      {-0.0, "0| 0|0|0"},
      {13.5, "13.5| 13.5|14|14"},
      {-12.5, "-12.5|-12.5|-12|-12"},
      {32767.5, "32767.5| 32767.5|32768|!6"},
      {2147483647.5, "2147483647.5| 2147483647.5|!6|!6"},
      {-2147483648.5, "-2147483648.5|-2147483648.5|-2147483648|!6"},
      {1.0 / 3, "0.333333333333333| .333333333333333|0|0"},
      {999999999999999.9, "1E+15| 1E+15|!6|!6"},
      {-1.25e300, "-1.25E+300|-1.25E+300|!6|!6"},
      {kNoNumber, "!6|!6|!6|!6"}};
  for (const auto& [number, texts] : cases) {
    EXPECT_EQ(Joined({[n = number] { return GeneralText(n); },
                      [n = number] { return SignedNumberText(n); },
                      [n = number] { return std::to_string(ToLong(n)); },
                      [n = number] { return std::to_string(ToInteger(n)); }}),
              texts);
  }
  EXPECT_EQ(GeneralText(0.1F) + ' ' + GeneralText(-16777216.0F), "0.1 -16777220");
  EXPECT_EQ(NumberOf([] { Divide(0, 0); }), 11);
  EXPECT_EQ(NumberOf([] { Divide(1e300, 1e-300); }), 6);
}

TEST(Money, FollowsEachPattern) {
  const std::pair<double, std::string> cases[] = {
      {-0.004, "0.00|0.00|.00|0.00| .| .00"},
      {0.005, "0.01|0.01|.01|0.01| .01| .01"},
      {2.675, "2.68|2.68|2.68|2.68| 2.68| 2.68"},
      {-127.5 * 0.27, "-34.43|-34.43|-34.43|-34.43| -34.43| -34.43"},
      {-1234567.5,
       "-1234567.50|-1234567.50|-1234567.50|-1,234,567.50| -1,234,567.5| -1,234,567.50"},
      {1234567890.12499,
       "1234567890.12|1234567890.12|1234567890.12|1,234,567,890.12| 1,234,567,890.12|"
       " 1,234,567,890.12"},
      {kNoNumber, "!6|!6|!6|!6|!6|!6"}};
  for (const auto& [number, texts] : cases) {
    std::vector<std::function<std::string()>> readings;
    for (const char* pattern : {"Fixed", "#0.00", "#.00", "#,##0.00", " #,###.##", " #,###.00"}) {
      readings.emplace_back([=, n = number] { return Format(n, pattern); });
    }
    EXPECT_EQ(Joined(readings), texts);
  }
  EXPECT_EQ(NumberOf([] { Format(1.0, "#0.00 "); }), 5);
}

/// Runs on 14 June 2004, 08:30 in the morning, unless a test moves the clock.
class Dates : public testing::Test {
 protected:
  void SetUp() override { SetToday(2004, 6, 14); }
  void TearDown() override { SetClock({}); }

  static void SetToday(int year, int month, int day) {
    SetClock([=] { return Moment{*DayNumber(year, month, day) + 30600.0 / 86400}; });
  }
};

TEST_F(Dates, AreThoseOfTheSecondThatTheClockHasReached) {
  for (const double second : {0.0, 1.0, 38527.0, 43199.0, 86399.0}) {
    for (const double part : {0.0, 0.3, 0.7, 0.999}) {
      SetClock([=] { return Moment{38152 + (second + part) / 86400}; });
      EXPECT_EQ(Now(), Moment{38152 + second / 86400}) << second << " and " << part;
    }
  }
}

TEST_F(Dates, AndTimesAreReadAsTypedAndRefusedRatherThanGuessed) {
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"12/30/1899 12:00:00 AM", {"0:00", "12 am", "12:00 AM", "0.00 a"}},
      {"12/30/1899 8:30:00 AM", {"8:30", "8:30 a", "08:30AM", "8.30 am", " 8 : 30 Am "}},
      {"12/30/1899 12:30:00 PM", {"12:30", "12.30 pm", "0:30 pm"}},
      {"12/30/1899 2:00:00 PM", {"2 pm", "2P", "14.00 pm", "14:00"}},
      {"12/30/1899 11:59:59 PM", {"23:59:59", "11:59:59p"}},
      {"6/14/2004 12:00:00 AM", {"06/14/04", " 6-14-2004 ", "6 / 14 / 4", "6/14", "6-14 12a"}},
      {"6/14/2004 8:30:00 AM", {"06/14/04   8:30 am", "6/14 8:30", "6-14-04 8.30 am"}},
      {"12/31/9999 11:59:00 PM", {"12/31/9999 23:59"}},
      // neither date nor time
      {"!13", {"", " ", "8", "+15", "All", "8.30", "/", "8:", ":30", "6/", "6/14/"}},
      // beyond the clock
      {"!13", {"24:00", "8:60", "8:30:60", "8.75 am", "13 am", "008:30", "8:300", "-8:30"}},
      // beyond the calendar
      {"!13", {"0/14", "6/31/04", "2/29/03", "2/29/1900", "6/14/204", "6/14/20045", "6/14/0099"}},
      // another order or other separators
      {"!13", {"14/6/04", "2004-06-14", "1:30 06/14/04", "6/14-04", "6.14.04", "6/14/04 6/15/04"}},
      // something behind a good beginning
      {"!13", {"8:30 am x", "8:30 xm", "8:30 am pm", "8:30:15:10", "8.30.15 am", "6/14/04x"}},
      {"!13", {"6/14/04 8", "8:30 \xF0\x9F\x98\x80", std::string("8:30\0", 5)}},
      // nothing that a hand types
      {"!13", {Megabyte(' '), Megabyte('1'), Megabyte('0') + ":30", "8:30" + Megabyte('a')}}};
  for (const auto& [moment, texts] : cases) {
    for (const std::string& text : texts) {
      SCOPED_TRACE(text.substr(0, 40));
      EXPECT_EQ(OutcomeOf([&] { return Format(MomentFrom(text), "General Date"); }), moment);
      EXPECT_EQ(IsDate(text), moment[0] != '!');
      EXPECT_EQ(NumberOf([&] { TimeValue(text); }), moment[0] == '!' ? 13 : 0);
    }
  }
}

TEST_F(Dates, FallIntoAHundredYearsAroundToday) {
  EXPECT_EQ(DateValue("1/1/23"), *DayNumber(2023, 1, 1));
  EXPECT_EQ(DateValue("1/1/24"), *DayNumber(1924, 1, 1));
  SetToday(2099, 12, 31);
  EXPECT_EQ(DateValue("1/1/18"), *DayNumber(2118, 1, 1));
  EXPECT_EQ(DateValue("1/1/19"), *DayNumber(2019, 1, 1));
  EXPECT_EQ(DateValue("7/4"), *DayNumber(2099, 7, 4));
  EXPECT_FALSE(IsDate("2/29"));
  EXPECT_EQ(MomentFrom("12/29/1899 6:00 am"), Moment{-1.25});
  EXPECT_EQ(DayOf(Moment{-0.25}), -1);
}

TEST_F(Dates, ComeBackAcrossEveryLeapYear) {
  for (int day = *DayNumber(1600, 2, 1); day < *DayNumber(2400, 4, 1); ++day) {
    const CivilDate date = CivilFromDays(day);
    ASSERT_EQ(DayNumber(date.Year, date.Month, date.Day), day);
    ASSERT_EQ(DateValue(Format(Moment{static_cast<double>(day)}, "ddddd")), day);
  }
}

TEST_F(Dates, AreRoundedToSecondsThenCutToMinutes) {
  const double second = 1.0 / 86400;
  const std::tuple<double, const char*, const char*> cases[] = {
      {0.5 + 59.4 * second, "hh:mm", "12:00"},
      {0.5 + 59.6 * second, "hh:mm", "12:01"},
      {38153 - 0.6 * second, "mm/dd/yy", "06/14/04"},
      {38153 - 0.4 * second, "mm/dd/yy", "06/15/04"},
      {38152.9, "dddd", "Monday"},
      {38321.127835648148, "General Date", "11/30/2004 3:04:05 AM"},
      {2958466 - 0.4 * second, "mm/dd/yy", "!6"},
      {kNoNumber, "mm/dd/yy", "!6"}};
  for (const auto& [days, pattern, text] : cases) {
    EXPECT_EQ(OutcomeOf([d = days, p = pattern] { return Format(Moment{d}, p); }), text);
    EXPECT_EQ(OutcomeOf([d = days, p = pattern] { return Format(d, p); }), text);
  }
}

TEST(Values, ConvertByTheirKind) {
  const std::tuple<Value, Value::Kind, const char*> cases[] = {
      // plain, money, day, number
      {true, Value::Kind::Boolean, "True|1.00|12/31|1"},
      {38152, Value::Kind::Long, "38152|38152.00|06/14|38152"},
      {0.1F, Value::Kind::Single, "0.1|0.10|12/30|0.100000001490116"},
      {-9.0, Value::Kind::Double, "-9|-9.00|12/21|-9"},
      {Moment{-1.25}, Value::Kind::Date, "12/29/1899 6:00:00 AM|-1.25|12/29|-1.25"},
      {"8.5", Value::Kind::Text, "8.5|8.50|8.5|8.5"},
      {"8.5x", Value::Kind::Text, "8.5x|8.5x|8.5x|!13"},
      {"1e999", Value::Kind::Text, "1e999|1e999|1e999|!6"},
      {Value(), Value::Kind::Null, "!94|||!94"}};
  for (const auto& [value, kind, texts] : cases) {
    EXPECT_EQ(value.KindOf(), kind) << texts;
    EXPECT_EQ(
        Joined({[v = value] { return v.ToText(); }, [v = value] { return Format(v, "#0.00"); },
                [v = value] { return Format(v, "mm/dd"); },
                [v = value] { return GeneralText(v.ToDouble()); }}),
        texts);
    const bool counts = !value.IsText() && !value.IsNull();
    EXPECT_EQ(value.NumberOrZero(), counts ? value.ToDouble() : 0) << texts;
  }
  EXPECT_EQ(NumberOf([] { Value(2147483648.0).ToLong(); }), 6);
  EXPECT_EQ(Value(2.5).ToLong(), 2);
  EXPECT_EQ(Format(Value("6/14/2004 1:30 pm"), "hh:mm am/pm"), "01:30 pm");
  EXPECT_NE(Value(1.0), Value(1));
}

}  // namespace
}  // namespace ostrel
