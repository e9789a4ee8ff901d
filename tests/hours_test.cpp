// Clock times, the time question, and a day's hours and gross.

#include <gtest/gtest.h>

#include <sstream>

#include "entry/auto_clock_in.h"
#include "frame/app_state.h"
#include "hours/employee_hours.h"
#include "hours/time_question.h"
#include "scan_main/scan_main.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

TEST(TimeQuestion, NothingThatIsTypedIsRefused) {
  // Offered, typed, the time that it makes ("unset": the caller's stays), what is offered next.
  const std::string cases[][4] = {{"08:00 am", "+15", "08:15 am", "08:00"},
                                  {"08:00 am", "-90", "06:30 am", "08:00"},
                                  {"11:50 pm", "+20", "12:10 am", "23:50"},
                                  {"12:30 am", "-90", "11:00 pm", "00:30"},
                                  {"08:00 am", "+0.5", "08:00 am", "08:00"},
                                  {"08:00 am", "+1.5", "08:02 am", "08:00"},
                                  {"01:00 pm", "+2880", "01:00 pm", "13:00"},
                                  {"08:00 am", "+", "08:00 am", "08:00"},
                                  {"08:00 am", "9", "08:00 am", "08:00 am"},
                                  {"08:00 am", "8:30", "08:00 am", "08:00 am"},
                                  {"08:00 am", "1:15 p", "01:15 pm", "08:00 am"},
                                  {"08:00 am", "06/14/04 9:00 am", "unset", "08:00 am"},
                                  {"08:00 am", "  ", "08:00 am", "08:00 am"}};
  RunningPayroll payroll;
  for (const auto& [first, typed, wanted, next] : cases) {
    std::string offered = first, time = "unset";
    std::int16_t answer = 0;
    payroll.Desktop.Expect("[?] Head | Clock out at " + first + "? | YesNoCancel -> No\n" +
                               "[input] Head | \\rClock out at " + first + "? | " + first + " -> " +
                               typed,
                           [&] { AskTime("Clock out", offered, "Head", time, answer); });
    EXPECT_EQ(time, wanted) << typed;
    EXPECT_EQ(offered, next) << typed;
    EXPECT_EQ(answer, kTimeChanged);
  }
  // A failure that is ignored leaves the offered time, too.
  std::string offered = "08:30 am", time;
  std::int16_t answer = 0;
  payroll.Desktop.Expect("[?]*-> No\n[input]*-> +40000\n[!]*(Err#6) in Line# 3520*-> Ignore",
                         [&] { AskTime("Clock out", offered, "Head", time, answer); });
  EXPECT_EQ(time, "08:30 am");
  offered = "rubbish";
  payroll.Desktop.Expect("[?]*-> No\n[input]*-> +15\n[!]*(Err#13) in Line# 3510*-> Ignore",
                         [&] { AskTime("Clock out", offered, "Head", time, answer); });
  EXPECT_EQ(time, "rubbish");
}

TEST(AutomaticClockIn, StandsOnTheDayWithTheCodesOfTheBoxes) {
  RunningPayroll payroll;
  Payroll::FillBoxes("130a|||||12");
  txtToday.Text = "11/17/04";
  AutoClockIn("07:15 am");
  AutoClockIn("");
  EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME ETIME EVENT_TYPE QUANTITY QUAN_DESC RATE GROSS "
                           "ENTERPRISE MEMO HOURS"),
            "130,DURAND ANNE,11/17/2004 7:15:00 AM,I,0, ,0,0,12, ,-|"
            "130,DURAND ANNE,11/17/2004 12:00:00 AM,I,0, ,0,0,12, ,-");
}

/// What stands behind the ">" of each line; without one nothing has been reckoned.
std::string ResultsIn(const std::string& day) {
  std::istringstream lines(day);
  std::string results;
  for (std::string line; std::getline(lines, line, '|');) {
    const std::size_t mark = line.find(" > ");
    if (!results.empty()) results += '|';
    results += mark == std::string::npos ? "-,-,-" : line.substr(mark + 3);
  }
  return results;
}

TEST(EmployeeHours, PairsClockEventsAndSpreadsHours) {
  const std::string cases[][3] = {
      // behind ">" hours, gross, gross an hour
      {"the worked day",
       "130 I 7:00 am > 0,-,-|130 P 8:00 am 100 .5 > 3,50,16.67|130 P 10:00 am 50 .5 > "
       "1.5,25,16.67|"
       "130 O 11:30 am|130 I 12:30 pm > 2.75,-,-",
       "3:15 pm"},
      {"hundredths of an hour",
       "130 I 8:00 am > 0.33,-,-|130 I 8:20 am > 0.17,-,-|130 I 8:30 am > 0.08,-,-|130 O 8:35 am"},
      {"a clock-in ends the open period",
       "130 I 8:00 am > 5,-,-|130 I 1:00 pm > 4,-,-|130 O 5:00 pm"},
      {"the later of two clock-outs", "130 I 8:00 am > 2,-,-|130 O 9:00 am|130 O 10:00 am"},
      {"what comes before the first clock-in",
       "130 O 6:00 am|130 P 6:30 am 5 1|130 I 8:00 am > 1,-,-|130 O 9:00 am"},
      {"piecework behind the clock-out counts towards the period and is left alone",
       "130 I 8:00 am > 0,-,-|130 P 8:30 am 10 1 > 1,10,10|130 O 10:00 am|130 P 10:30 am 10 1"},
      {"on the boundary of two periods the later one writes last",
       "130 I 8:00 am > 0,-,-|130 P 10:00 am 10 1 > 2,10,5|130 I 10:00 am > 0,-,-|"
       "130 P 10:30 am 10 1 > 2,10,5|130 O 12:00 pm"},
      {"quantities that cancel out",
       "130 I 8:00 am > 1,-,-|130 P 8:30 am 10 2|130 P 8:40 am -10 2|130 O 9:00 am"},
      {"still clocked in: until now", "130 I 8:00 am > 1.5,-,-", "9:30 am"},
      {"still clocked in: not past the default clock-out", "130 I 8:00 am > 9,-,-"},
      {"clocked in after it: the size of the difference", "130 I 6:00 pm > 1,-,-", "7:00 pm"},
      {"the marker of the standard rate gets no special reading",
       "130 I 8:00 am > 0,-,-|130 P 8:30 am 2 -9 > 1,-18,-18|130 O 9:00 am"},
      {"each employee alone",
       "130 I 8:00 am > 2,-,-|101 I 9:00 am > 3,-,-|130 O 10:00 am|101 O 12:00 pm|"
       "140 P 9:00 am 1 1"},
  };
  for (const auto& [what, day, now] : cases) {
    SCOPED_TRACE(what);
    RunningPayroll payroll;
    payroll.AddLine(day);
    payroll.SetClock(("11/18/04 " + (now.empty() ? "6:00 pm" : now)).c_str());
    for (int time = 0; time < 2; ++time) {  // repeatable
      payroll.Desktop.Expect("", CalcEmplHours);
      EXPECT_EQ(payroll.Fields("HOURS GROSS HOUR_GROSS"), ResultsIn(day));
      EXPECT_FALSE(JobStepAborted);
    }
  }
}

TEST(EmployeeHours, WhatCannotBeReckonedIsReportedAndTheRestIsSaved) {
  RunningPayroll payroll;  // a period of no minutes
  payroll.AddLine("130 I 8:00 am|130 P 8:00 am 10 1|130 O 8:00 am|140 I 8:00 am|140 O 9:00 am");
  payroll.Desktop.Expect("[!]*(Err#11) in Line# 4450 in routine 'CalcEmplHours'*-> Ignore",
                         CalcEmplHours);
  EXPECT_EQ(payroll.Fields("HOURS HOUR_GROSS"), "0,-|0,-|-,-|1,-|-,-");
  std::string most;
  for (int i = 0; i < 200; ++i) most += "150 I 8:00 am|";
  payroll.AddLine(most);
  payroll.Desktop.Expect("[!]*(Err#11)*-> Ignore", CalcEmplHours);
  payroll.AddLine("150 I 8:00 am");
  payroll.Desktop.Expect("[!]*(Err#11)*-> Ignore\n[!]*Subscript out of range*-> Ignore",
                         CalcEmplHours);
}

}  // namespace
}  // namespace ostrel
