// Clock times, the time question, and a day's hours and gross.

#include <gtest/gtest.h>

#include "frame/app_state.h"
#include "hours/auto_clock_in.h"
#include "hours/employee_hours.h"
#include "hours/time_question.h"
#include "platform/failure.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

TEST(TimeArithmetic, HoursBetweenClockTimes) {
  Payroll payroll;
  payroll.Start();
  const struct {
    const char* start;
    const char* stop;
    double hours;
  } cases[] = {{"07:00 am", "11:30 am", 4.5},  {"08:00 am", "08:00 am", 0},
               {"08:00 am", "08:20 am", 0.33}, {"08:00 am", "08:10 am", 0.17},
               {"08:00 am", "08:05 am", 0.08}, {"12:00 am", "11:59 pm", 23.98},
               {"06:00 pm", "05:00 pm", 1},    {"10:00 pm", "02:00 am", 20}};
  for (const auto& test : cases) {
    EXPECT_EQ(HoursDiff(test.start, test.stop), test.hours) << test.start << " " << test.stop;
  }
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
  EXPECT_EQ(HoursDiff("rubbish", "08:00 am"), 0);
  payroll.Desktop.TakeShown();
}

TEST(TimeArithmetic, AClockTimeMovedByMinutes) {
  Payroll payroll;
  payroll.Start();
  const struct {
    const char* time;
    double minutes;
    const char* moved;
  } cases[] = {{"08:00 am", 15, "08:15 am"},  {"08:00 am", -90, "06:30 am"},
               {"11:50 pm", 20, "12:10 am"},  {"12:30 am", -90, "11:00 pm"},
               {"08:00 am", 0.5, "08:00 am"}, {"08:00 am", 1.5, "08:02 am"},
               {"01:00 pm", 2880, "01:00 pm"}};
  for (const auto& test : cases) {
    std::string time = test.time;
    EXPECT_EQ(AdjustTime(time, test.minutes), test.moved) << test.time << " " << test.minutes;
  }
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);  // 16 bits
  std::string time = "08:00 am";
  AdjustTime(time, 40000);
  EXPECT_NE(payroll.Desktop.TakeShown().find("(Err#6)"), std::string::npos);
}

TEST(TimeQuestion, NothingThatIsTypedIsRefused) {
  const struct {
    const char* answer;
    const char* time;  // "unset" where the caller's value stays
    const char* offered;
  } cases[] = {{"+15", "08:15 am", "08:00"},
               {"-90", "06:30 am", "08:00"},
               {"+", "08:00 am", "08:00"},
               {"9", "08:00 am", "08:00 am"},
               {"8:30", "08:00 am", "08:00 am"},
               {"8:30 am", "08:30 am", "08:00 am"},
               {"1:15 p", "01:15 pm", "08:00 am"},
               {"06/14/04", "unset", "08:00 am"},
               {"", "08:00 am", "08:00 am"},
               {"  ", "08:00 am", "08:00 am"},
               {"06/14/04 9:00 am", "unset", "08:00 am"}};
  Payroll payroll;
  payroll.Start();
  for (const auto& test : cases) {
    SCOPED_TRACE(test.answer);
    std::string offered = "08:00 am", time = "unset";
    std::int16_t answer = 0;
    payroll.Desktop.WillAnswer(BoxAnswer::No);
    payroll.Desktop.WillType(test.answer);
    AskTime("Clock out", offered, "Head", time, answer);
    EXPECT_EQ(time, test.time);
    EXPECT_EQ(offered, test.offered);
    EXPECT_EQ(answer, kTimeChanged);
    EXPECT_EQ(payroll.Desktop.TakeShown(),
              std::string("[?] Head | Clock out at 08:00 am? | YesNoCancel -> No\n"
                          "[input] Head | \\rClock out at 08:00 am? | 08:00 am -> ") +
                  test.answer);
  }
}

TEST(EmployeeList, IsTakenApartNumberByNumber) {
  Payroll payroll;
  payroll.Start();
  const struct {
    const char* list;
    std::int32_t number;
    const char* rest;
  } cases[] = {{"in (12,15,20)", 12, "15,20"},
               {"15,20", 15, "20"},
               {"20", 20, ""},
               {"in (12)", 12, ""},
               {"", 0, ""}};
  for (const auto& test : cases) {
    std::string list = test.list;
    std::int32_t number = -1;
    ParseNextEmpl(list, number);
    EXPECT_EQ(number, test.number);
    EXPECT_EQ(list, test.rest);
  }
}

TEST(AutomaticClockIn, StandsOnTheDayWithTheCodesOfTheBoxes) {
  Payroll payroll;
  payroll.Start();
  txtInput[kEmplBox].Text = "130a";
  txtInput[kEnterpriseBox].Text = "12";
  txtInput[kMemoBox].Text = "";
  txtToday.Text = "11/17/04";
  AutoClockIn("07:15 am");
  AutoClockIn("");
  EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME ETIME EVENT_TYPE QUANTITY QUAN_DESC RATE GROSS "
                           "ENTERPRISE MEMO HOURS"),
            "130,DURAND ANNE,11/17/2004 7:15:00 AM,I,0, ,0,0,12, ,-|"
            "130,DURAND ANNE,11/17/2004 12:00:00 AM,I,0, ,0,0,12, ,-");
}

TEST(EmployeeHours, PairsClockEventsAndSpreadsHours) {
  struct Day {
    const char* what;
    std::vector<const char*> lines;
    const char* now;
    const char* result;
  };
  const Day cases[] = {
      {"the worked day",
       {"130 I 7:00 am", "130 P 8:00 am 100 .5", "130 P 10:00 am 50 .5", "130 O 11:30 am",
        "130 I 12:30 pm"},
       "3:15 pm",
       "130 I 07:00 am 0h|130 P 08:00 am 100x0.5=50 3h 16.67/h|130 P 10:00 am 50x0.5=25 1.5h "
       "16.67/h|"
       "130 O 11:30 am|130 I 12:30 pm 2.75h"},
      {"a clock-in ends the open period",
       {"130 I 8:00 am", "130 I 1:00 pm", "130 O 5:00 pm"},
       "6:00 pm",
       "130 I 08:00 am 5h|130 I 01:00 pm 4h|130 O 05:00 pm"},
      {"the later of two clock-outs",
       {"130 I 8:00 am", "130 O 9:00 am", "130 O 10:00 am"},
       "6:00 pm",
       "130 I 08:00 am 2h|130 O 09:00 am|130 O 10:00 am"},
      {"what comes before the first clock-in",
       {"130 O 6:00 am", "130 P 6:30 am 5 1", "130 I 8:00 am", "130 O 9:00 am"},
       "6:00 pm",
       "130 O 06:00 am|130 P 06:30 am 5x1|130 I 08:00 am 1h|130 O 09:00 am"},
      {"piecework behind the clock-out counts towards the period and is left alone",
       {"130 I 8:00 am", "130 P 8:30 am 10 1", "130 O 10:00 am", "130 P 10:30 am 10 1"},
       "6:00 pm",
       "130 I 08:00 am 0h|130 P 08:30 am 10x1=10 1h 10/h|130 O 10:00 am|130 P 10:30 am 10x1"},
      {"on the boundary of two periods the later one writes last",
       {"130 I 8:00 am", "130 P 10:00 am 10 1", "130 I 10:00 am", "130 P 10:30 am 10 1",
        "130 O 12:00 pm"},
       "6:00 pm",
       "130 I 08:00 am 0h|130 P 10:00 am 10x1=10 2h 5/h|130 I 10:00 am 0h|130 P 10:30 am 10x1=10 "
       "2h 5/h|130 O 12:00 pm"},
      {"piecework without a rate is paid by the hour",
       {"130 I 8:00 am", "130 P 8:30 am 10 0", "130 O 9:00 am"},
       "6:00 pm",
       "130 I 08:00 am 1h|130 P 08:30 am 10x0|130 O 09:00 am"},
      {"quantities that cancel out",
       {"130 I 8:00 am", "130 P 8:30 am 10 2", "130 P 8:40 am -10 2", "130 O 9:00 am"},
       "6:00 pm",
       "130 I 08:00 am 1h|130 P 08:30 am 10x2|130 P 08:40 am -10x2|130 O 09:00 am"},
      {"still clocked in: until now", {"130 I 8:00 am"}, "9:30 am", "130 I 08:00 am 1.5h"},
      {"still clocked in: not past the default clock-out",
       {"130 I 8:00 am"},
       "6:00 pm",
       "130 I 08:00 am 9h"},
      {"clocked in after it: the size of the difference",
       {"130 I 6:00 pm"},
       "7:00 pm",
       "130 I 06:00 pm 1h"},
      {"the marker of the standard rate gets no special reading",
       {"130 I 8:00 am", "130 P 8:30 am 2 -9", "130 O 9:00 am"},
       "6:00 pm",
       "130 I 08:00 am 0h|130 P 08:30 am 2x-9=-18 1h -18/h|130 O 09:00 am"},
      {"each employee alone",
       {"130 I 8:00 am", "101 I 9:00 am", "130 O 10:00 am", "101 O 12:00 pm", "140 P 9:00 am 1 1"},
       "6:00 pm",
       "130 I 08:00 am 2h|101 I 09:00 am 3h|130 O 10:00 am|101 O 12:00 pm|140 P 09:00 am 1x1"},
  };
  for (const Day& day : cases) {
    SCOPED_TRACE(day.what);
    Payroll payroll;
    payroll.Start();
    for (const char* line : day.lines) payroll.AddLine(line);
    payroll.SetClock((std::string("11/18/04 ") + day.now).c_str());
    CalcEmplHours();
    EXPECT_EQ(payroll.Lines(), day.result);
    CalcEmplHours();  // repeatable
    EXPECT_EQ(payroll.Lines(), day.result);
    EXPECT_FALSE(JobStepAborted);
    EXPECT_EQ(payroll.Desktop.Pointer(), MousePointer::Normal);
  }
}

TEST(EmployeeHours, RefusesADayThatIsNone) {
  Payroll payroll;
  payroll.Start();
  const struct {
    const char* day;
    const char* message;
  } cases[] = {{"All", "The Date='All'!\\rSpecify the one day desired then rerun this job step."},
               {"", "The Date=''!\\rSpecify the one day desired then rerun this job step."},
               {"11/17/04", "No employees clocked in on 11/17/04!\\rCan't run this job step."}};
  for (const auto& test : cases) {
    txtToday.Text = test.day;
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    CalcEmplHours();
    EXPECT_TRUE(JobStepAborted);
    EXPECT_EQ(payroll.Desktop.TakeShown(),
              std::string("[!] Ostrel Payroll | ") + test.message + " | Ok -> Ok");
    EXPECT_EQ(payroll.Desktop.Pointer(), MousePointer::Normal);
  }
}

TEST(EmployeeHours, APeriodOfNoMinutesIsReportedAndTheRestIsSaved) {
  Payroll payroll;
  payroll.Start();
  for (const char* line :
       {"130 I 8:00 am", "130 P 8:00 am 10 1", "130 O 8:00 am", "140 I 8:00 am", "140 O 9:00 am"}) {
    payroll.AddLine(line);
  }
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
  CalcEmplHours();
  EXPECT_EQ(payroll.Lines(),
            "130 I 08:00 am 0h|130 P 08:00 am 10x1=10 0h|130 O 08:00 am|140 I 08:00 am 1h|140 O "
            "09:00 am");
  EXPECT_NE(payroll.Desktop.TakeShown().find("(Err#11) in Line# 4450 in routine 'CalcEmplHours'"),
            std::string::npos);
}

TEST(EmployeeHours, MoreThanTwoHundredClockInsAreReported) {
  Payroll payroll;
  payroll.Start();
  for (int i = 0; i < 201; ++i) payroll.AddLine("130 I 8:00 am");
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
  CalcEmplHours();
  EXPECT_NE(payroll.Desktop.TakeShown().find("Subscript out of range"), std::string::npos);
}

}  // namespace
}  // namespace ostrel
