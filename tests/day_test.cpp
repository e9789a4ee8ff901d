// A day's facts and what is said about them: what is odd, who earns too little, who is in.

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "day/day_pages.h"
#include "day/day_watch.h"
#include "day/findings.h"
#include "day/read_day.h"
#include "frame/app_state.h"
#include "hours/employee_hours.h"
#include "platform/values/dates.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "support/agreeing_desktop.h"
#include "support/ask_sqlite.h"
#include "support/dbf_builder.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

const int kDay = static_cast<int>(DateValue("11/18/04"));

/// "130 P 8:00 am 100 .5 BOX": employee, kind, time, quantity, rate, unit. Gross is as it is written,
/// unless "=" and another one stand behind the unit; hours are typed behind "h".
DayFacts FactsOf(const std::string& day) {
  DayFacts facts{kDay, {}};
  std::istringstream all(day);
  for (std::string text; std::getline(all, text, '|');) {
    std::istringstream words(text);
    std::string kind, time, half, extra;
    DayLine line;
    words >> line.EmplNumb >> kind >> time >> half;
    if (words >> line.Quantity >> line.Rate) words >> line.Unit;
    words.clear();
    line.Row = static_cast<Bookmark>(facts.Lines.size()) + 1;
    line.Name = "ON THE LINE";
    line.Kind = kind[0];
    line.Minute = MinuteOf(MomentFrom(time + " " + half));
    if (line.Quantity != 0) line.Gross = HundredthsOrZero(line.Quantity * line.Rate);
    while (words >> extra) {
      (extra[0] == '=' ? line.Gross : line.Hours) = NumericPrefix(extra.substr(1));
    }
    facts.Lines.push_back(line);
  }
  return facts;
}

std::shared_ptr<const Office> SampleOffice() {
  return std::make_shared<const Office>(Office{
      6.75,
      {{101, "ALVAREZ MARIA", 2}, {125, "CHEN LI", 2}, {130, "DURAND ANNE", 2}, {140, "", 1}}});
}

/// "-" in front of the time: the plain layout.
DayView ViewOf(const std::string& day, const std::string& now = "6:00 pm") {
  const bool plain = now[0] == '-';
  const std::string moment =
      (now.find('/') == now.npos ? "11/18/04 " : "") + now.substr(plain ? 1 : 0);
  return MakeDayView(FactsOf(day), {!plain, MomentFrom(moment), "05:00 pm"}, SampleOffice());
}

std::string Rows(const DayPage& page) {
  std::string all = page.Heading;
  for (const PageRow& row : page.Rows) {
    all += "\n" + std::to_string(row.Line) + ":";
    for (const std::string& text : row.Texts) all += " " + text + ",";
    all.pop_back();
  }
  return all;
}

TEST(DayToCheck, SaysWhatIsOddInAForemansWords) {
  struct Row {
    const char *What, *Day, *Expected;  // number of the line, then what is said of it
    const char* Now = "6:00 pm";
  };
  const std::string worked = "130 I 7:00 am|130 P 8:00 am 24 .85 BOX|130 O 11:30 am";
  const Row rows[] = {
      {"a day as it should be", "130 I 7:00 am|130 P 9:00 am 24 .85 BOX|130 O 11:30 am", ""},
      {"no out", "130 I 12:30 pm", "1 in without out at 12:30 pm: hours run to 05:00 pm"},
      {"no out, but still at work", "130 I 12:30 pm", "", "4:59 pm"},
      {"no out, and past the end of the day", "130 I 12:30 pm",
       "1 in without out at 12:30 pm: hours run to 05:00 pm", "5:00 pm"},
      {"no out yesterday", "130 I 7:00 am", "1 in without out at 07:00 am: hours run to 09:00 am",
       "11/19/04 9:00 am"},
      {"no in", "130 O 12:30 pm", "1 out without in at 12:30 pm"},
      {"past midnight: each day by itself", "130 O 2:00 am|130 I 10:00 pm",
       "1 out without in at 02:00 am|2 in without out at 10:00 pm: hours run to 05:00 pm"},
      {"in while in", "130 I 7:00 am|130 I 1:00 pm|130 O 4:00 pm",
       "2 in at 01:00 pm while in since 07:00 am"},
      {"a change of jobs", "130 I 7:00 am|130 O 12:00 pm|130 I 12:00 pm|130 O 4:00 pm", ""},
      {"the same, entered the other way round",
       "130 I 7:00 am|130 I 12:00 pm|130 O 12:00 pm|130 O 4:00 pm", ""},
      {"second out", "130 I 7:00 am|130 O 4:00 pm|130 O 5:00 pm",
       "3 second out at 05:00 pm: the one at 04:00 pm no longer counts"},
      {"pieces before the in, after the out and with no in at all",
       "125 P 6:00 am 24 .85 BOX|130 P 6:30 am 24 .85 BOX|130 I 7:00 am|130 O 9:00 am|"
       "130 P 9:01 am 24 .85 BOX",
       "1 24 BOX at 06:00 am while not clocked in: no hours go to them|"
       "2 24 BOX at 06:30 am while not clocked in: no hours go to them|"
       "5 24 BOX at 09:01 am while not clocked in: no hours go to them"},
      {"pieces at the minute of the in and of the out",
       "130 I 7:00 am|130 P 7:00 am 24 .85 BOX|130 P 9:00 am 24 .85 BOX|130 O 9:00 am", ""},
      {"pieces after the default clock-out", "130 I 4:00 pm|130 P 5:30 pm 24 .85 BOX",
       "1 in without out at 04:00 pm: hours run to 05:00 pm|"
       "2 24 BOX at 05:30 pm while not clocked in: no hours go to them"},
      {"pieces that cancel out",
       "130 I 7:00 am|130 P 8:00 am 24 .85|130 P 8:30 am -24 .85|130 O 9:00 am",
       "2 24 pieces at 08:00 am take no hours: the pieces since that clock-in come to nothing|"
       "3 -24 pieces at 08:30 am take no hours: the pieces since that clock-in come to nothing|"
       "3 quantity below 0: -24 pieces"},
      {"the same line twice",
       "130 I 7:00 am|130 I 7:00 am|130 P 8:00 am 24 .85 BOX|130 P 8:00 am 24 .85 box|"
       "130 P 8:00 am 24 .9 BOX|130 O 9:00 am|130 O 9:00 am",
       "2 the same line twice|4 the same line twice|7 the same line twice"},
      {"fourteen hours are not too long", "130 I 5:00 am|130 O 7:00 pm", ""},
      {"more are", "130 I 1:00 am|130 O 3:00 am|130 I 5:00 am|130 O 7:00 pm",
       "3 16.00 hours on one day"},
      {"one slip too many noughts",
       "101 X 7:00 am 24 .85 BOX|101 X 7:01 am 24 .85 BOX|101 X 7:02 am 20 .85 BOX|"
       "101 X 7:03 am 239 .85 BOX|101 X 7:04 am 240 .85 box|101 X 7:05 am 999 .85 LBS",
       "5 240 box, the day's usual is 24", "-6:00 pm"},
      {"pieces without a rate of their own",
       "130 I 7:00 am|130 P 8:00 am 24 0 BOX|130 P 9:00 am 2 -9 BOX|130 O 11:30 am",
       "2 24 BOX at rate 0|3 2 BOX at the standard rate"},
      {"units that are none",
       "130 I 7:00 am|130 P 8:00 am 24 1 0|130 P 9:00 am 2 1 hrs|130 O 11:30 am",
       "2 pieces described as \"0\"|3 pieces described as \"hrs\""},
      {"hours at a piece rate",
       "130 X 7:00 am 0 .85 HRS h4|130 X 7:00 am 0 6.75 HRS h4|130 X 7:00 am 0 -9 HRS h4",
       "1 4.00 hours at 0.85 an hour, the minimum wage is 6.75", "-6:00 pm"},
      {"the same at the clock; with pieces the rate of the in says nothing",
       "130 I 7:00 am 0 .85|130 O 9:00 am|130 I 9:30 am 0 .85|130 P 10:00 am 9 1 BOX|130 O 11:00 "
       "am",
       "1 2.00 hours at 0.85 an hour, the minimum wage is 6.75"},
      {"not on the list", "9999 I 7:00 am|9999 O 9:00 am", "1 9999 is not in the office's list"},
      {"gross of another quantity",
       "130 X 7:00 am 24 .85 BOX =20.40|130 X 7:01 am 240 .85 BOX =20.40|130 X 7:02 am 0 7 HRS h2 "
       "=9",
       "2 gross 20.40 instead of 240 x 0.85 = 204.00", "-6:00 pm"},
      {"the other layout", "130 X 7:00 am 0 7 HRS h2|130 ? 8:00 am",
       "1 entered without the time clock: the import file leaves it out|"
       "2 neither in, out nor pieces: the import file leaves it out"},
      {"the other layout, the other way round", "130 I 7:00 am",
       "1 entered with the time clock: goes out with the hours last worked out", "-6:00 pm"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.What);
    const DayView view = ViewOf(row.Day, row.Now);
    std::string found;
    for (const Finding& finding : FindingsOf(view)) {
      found += (found.empty() ? "" : "|") + std::to_string(finding.Line + 1) + " " + finding.What;
    }
    EXPECT_EQ(found, row.Expected);
  }
}

TEST(DayToCheck, TakesADayOfNothingButSlips) {
  std::string day;
  for (int i = 0; i < 10'000; ++i) day += "77777 I 8:00 am|77777 O 7:00 am|";
  const DayPage page = ToCheckPage(ViewOf(day));
  EXPECT_EQ(page.Heading, "20000 to check, 1 employee");
  EXPECT_EQ(page.Rows[0].Texts[3], "77777 is not in the office's list");
}

TEST(DayPages, CountAndLeadToTheLines) {
  const std::string day =
      "101 I 7:00 am 0 -9|130 I 7:00 am|130 P 8:00 am 24 .85 BOX|130 P 9:00 am 10.5 .5 LBS|"
      "130 P 10:00 am 6 .85 box|140 I 7:00 am 0 7|125 I 7:00 am 0 6|125 O 9:00 am|"
      "101 P 9:30 am 10 2 BOX|101 O 9:00 am";
  const DayView view = ViewOf(day, "11:00 am");
  EXPECT_EQ(Rows(WagesPage(view)),
            "4 employees, 1 below 6.75, 1.50 missing\n"
            "7: 125, CHEN LI, 2.00, , 12.00, 6.00, 1.50, \n"
            "1: 101, ALVAREZ MARIA, 0.00, 10, 20.00, , , \n"
            "2: 130, DURAND ANNE, 3.99, 40.5, 30.75, 7.71, , \n"
            "6: 140, ON THE LINE, 4.00, , 28.00, 7.00, , ");
  EXPECT_EQ(Rows(InNowPage(view)),
            "2 in\n2: 130, DURAND ANNE, 07:00 am, 0, 0, 0, 30 BOX, 10.5 LBS\n"
            "6: 140, ON THE LINE, 07:00 am, 0, 0, 0, ");
  const DayPage standard =
      WagesPage(ViewOf("101 X 7:00 am 0 -9 HRS h8|125 X 7:00 am 0 7 HRS h8", "-6:00 pm"));
  EXPECT_EQ(PageAsText(standard),
            "Empl#\tName\tHours\tPieces\tGross\tGross/Hr\tMissing\tStd Rate Hours\r\n"
            "125\tCHEN LI\t8.00\t\t56.00\t7.00\t\t\r\n"
            "101\tALVAREZ MARIA\t8.00\t\tStd Rate\t\t\t8.00\r\n");
  EXPECT_EQ(standard.Heading, "2 employees, 0 below 6.75, 1 at the standard rate");
  const DayView empty = ViewOf("");
  EXPECT_EQ(Rows(ToCheckPage(empty)) + Rows(InNowPage(empty)), "Nothing to checkNobody is in");
}

/// A day in which nothing needs to be in its place.
std::string RandomDay(std::mt19937& random) {
  const auto below = [&](int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
  };
  const char* const rates[] = {"0", ".27", "12.5", "-9", "1.115", ".85"};
  std::string day;
  for (int i = 0; i < 60; ++i) {
    const int minute = 12 * 60 + below(12) * 15;  // many at the same one
    day += std::to_string(101 + below(5)) + " " + "IOPPPX"[below(6)] + " " + TimeText(minute) +
           " " + std::to_string(below(40) - 4) + " " + rates[below(6)] + "|";
  }
  return day;
}

std::string WorkOf(const std::vector<LineWork>& lines) {
  std::string all;
  for (const LineWork& work : lines) {
    for (const auto& number : {work.Hours, work.Gross, work.HourGross})
      all += (number ? GeneralText(*number) : "-") + " ";
  }
  return all;
}

TEST(WorkedDay, IsWhatThePayrollCalculationLeaves) {
  std::mt19937 random(4);
  RunningPayroll payroll;
  for (const char* now : {"1:37 pm", "2:00 pm", "11:00 pm"}) {
    for (int run = 0; run < 4; ++run) {
      AskSqlite(payroll.App("Prin1234.mdb"), "DELETE FROM OstrelPr");
      payroll.SetClock((std::string("11/18/04 ") + now).c_str());
      DefaultClockOut = run % 2 == 0 ? "02:10 pm" : "05:00 pm";
      payroll.AddLine(RandomDay(random));
      const WorkedDay before = WorkOutDay(ReadDay("11/18/04"), PresentClock());
      {
        AgreeingDesktop operatorWhoGoesOn(payroll.Desktop, BoxAnswer::Ignore);
        operatorWhoGoesOn.SetTime(MomentFrom(std::string("11/18/04 ") + now));
        CalcEmplHours();
      }
      SetDesktop(&payroll.Desktop);
      payroll.SetClock((std::string("11/18/04 ") + now).c_str());
      const DayFacts facts = ReadDay("11/18/04");
      const WorkedDay after = WorkOutDay(facts, PresentClock());
      std::vector<LineWork> stored;
      for (const DayLine& line : facts.Lines)
        stored.push_back({line.Hours, line.Gross, line.HourGross});
      EXPECT_EQ(WorkOf(before.Lines), WorkOf(stored));
      EXPECT_EQ(LinesToWorkOut(facts, after), 0U);
    }
  }
}

TEST(DayWatch, ReadsAnewOnlyWhatHasChanged) {
  int lines = 0, offices = 0;
  DayClock clock{true, MomentFrom("11/18/04 10:00 am"), "05:00 pm"};
  DayWatch watch({[&](const std::string&) {
                    ++lines;
                    return FactsOf("130 I 7:00 am");
                  },
                  [&] {
                    ++offices;
                    return *SampleOffice();
                  },
                  [&] { return clock; }});
  const auto hours = [&](const char* day, std::uint64_t change) {
    const DayView& view = watch.At(day, change);
    return MoneyText(view.PayOf(*view.Worked.Find(130)).Hours) + " " + std::to_string(lines) +
           std::to_string(offices);
  };
  EXPECT_EQ(hours("11/18/04", 1), "3.00 11");
  EXPECT_EQ(hours("11/18/04", 1), "3.00 11");
  clock.Now = MomentFrom("11/18/04 10:30 am");
  EXPECT_EQ(hours("11/18/04", 1), "3.50 11");
  EXPECT_EQ(hours("11/18/04", 2), "3.50 21");
  EXPECT_EQ(hours("11/17/04", 2), "3.50 31");
  watch.Forget();
  EXPECT_EQ(hours("11/17/04", 2), "3.50 42");
}

TEST(ReadDay, TakesTheOfficesTableAsItIsAndLeavesTheEntrysRowsAlone) {
  RunningPayroll payroll;
  payroll.AddLine("130 P 8:00 am 24 .85|101 I 7:00 am");
  PrmsRs.Seek("=", 125);
  const Office office = ReadOffice();
  EXPECT_EQ(office.MinWage, 6.75);
  EXPECT_EQ(office.Find(101)->Name + office.Find(150)->Name, "ALVAREZ MARIA");
  EXPECT_EQ(office.Find(126), nullptr);
  EXPECT_EQ(ReadDay("11/17/04").Lines.size(), 0U);
  const DayFacts facts = ReadDay("11/18/04");
  ASSERT_EQ(facts.Lines.size(), 2U);
  EXPECT_EQ(facts.Lines[0].EmplNumb, 101);
  Data1.Recordset.SetBookmark(facts.Lines[1].Row);
  EXPECT_EQ(Data1.Recordset["QUANTITY"].Get().ToText(), "24");
  EXPECT_EQ(PrmsRs["EMPL_NUMB"].Get().ToText(), "125");
  payroll.Folder.Write("app/Prms1234.dbf",
                       DbfBuilder().Field("EMPL_NUMB", 'N', 6).Row({"77"}).Bytes());
  EXPECT_EQ(ReadOffice().Find(77)->Name, "");
}

}  // namespace
}  // namespace ostrel
