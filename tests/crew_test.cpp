// Commands over a whole crew, and the minimum wage watch.

#include <gtest/gtest.h>

#include "frame/app_state.h"
#include "scan_main/scan_main.h"
#include "support/dbf_builder.h"
#include "support/failing_statement.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

/// Crews are numbers; whatever else the office's file holds in their place is no crew at all.
TEST(ClockInACrew, SavesTheFormOnceForEachMember) {
  DbfBuilder table;
  table.Field("EMPL_NUMB", 'N', 6).Field("SORT_NAME", 'C', 15).Field("CREW", 'N', 4, 1);
  const char* const crews[] = {"2", "", "-2", "2.5", "****", "2.0", "1e1", "20"};
  for (int i = 0; i < 8; ++i) table.Row({std::to_string(101 + i), "NAME", crews[i]});
  Payroll payroll;
  payroll.Folder.Write("app/Prms1234.dbf", table.Bytes());
  payroll.Start();
  Option1[kClockOut].Value = true;
  const std::string none = "No Employees on Crew Number ", aborted = "\\rAborting job step.";
  const std::string cases[][4] = {
      // behind the message who is clocked in so far
      {"Crew#2", "2 -> 2", " 2 employees in Crew#2 have been clocked in.", "101,I|106,I"},
      {"#-2", "-2 -> -2", " 1 employees in Crew#-2 have been clocked in.", "101,I|106,I|103,I"},
      {"#.5", "0.5 -> 2.5", " 1 employees in Crew#2.5 have been clocked in.",
       "101,I|106,I|103,I|104,I"},
      {"2", "0 -> 20 and a word", " 1 employees in Crew#20 have been clocked in.",
       "101,I|106,I|103,I|104,I|108,I"},
      {"north # 1", "1 -> 1", none + "1" + aborted, "101,I|106,I|103,I|104,I|108,I"},
      {"#09", "9 -> 09", none + "09" + aborted, "101,I|106,I|103,I|104,I|108,I"},
      {"#", "0 -> 09a", none + "9" + aborted, "101,I|106,I|103,I|104,I|108,I"},
      {"#", "0 -> ", "No Crew Number specified." + aborted, "101,I|106,I|103,I|104,I|108,I"},
  };
  for (const auto& [comment, typed, message, employees] : cases) {
    txtComments.Text = comment;
    payroll.Choose(mnuClockInACrew, "[input] Clock In a Crew | \\rCrew Number to Clock In? | " +
                                        typed + "\n[i] Clock In a Crew | " + message +
                                        " | Ok -> Ok");
    EXPECT_EQ(payroll.Fields("EMPL_NUMB EVENT_TYPE"), employees) << typed;
  }
}

TEST(ClockInACrew, LeavesThePiecesOfTheLineBeforeBehind) {
  RunningPayroll payroll;
  payroll.AddLine("130 I 7:00 am");
  Option1[kPiecework].Value = true;
  Payroll::FillBoxes("130|12||LBS|.25");
  cmdSave.Press();
  payroll.Choose(mnuClockInACrew, "[input]*-> 2\n[i]* 3 employees in Crew#2*-> Ok");
  EXPECT_EQ(payroll.Fields("EVENT_TYPE QUANTITY GROSS"), "I,0,-|P,12,3|I,0,-|I,0,-|I,0,-");
}

/// The fields of a line that could not be begun are passed over.
TEST(DayCommands, ReportOnceALineThatCannotBeBegun) {
  const std::pair<MenuItem*, std::string> cases[] = {
      {nullptr, "[?]*-> Yes\n[!]*in Line# 6520*-> Ignore\n[!]*in Line# 4010*-> Ignore"},
      {&mnuClockInACrew, "[input]*-> 1\n[!]*in Line# 6520*-> Ignore\n[i]*-> Ok"},
      {&mnuClockoutAllEmpls, "[?]*-> Yes\n[!]*in Line# 2430*-> Ignore\n[i]*-> Ok"},
      {&mnuReClockInAllEmpls, "[?]*-> Yes\n[!]*in Line# 3320*-> Ignore\n[i]*-> Ok"},
  };
  for (const auto& [menu, shown] : cases) {
    SCOPED_TRACE(shown);
    RunningPayroll payroll;
    payroll.AddLine("140 I 7:00 am");
    Option1[kClockOut].Value = true;
    LinesRs = {};
    const FailingStatement again(3320);  // of the clock-in again, which binds rows of its own
    payroll.Desktop.Expect(shown, [&, entry = menu] {
      entry == nullptr ? payroll.Save("130") : payroll.Choose(*entry);
    });
    EXPECT_EQ(payroll.Lines(), "140 I 07:00 am");
  }
}

TEST(DayCommands, ReClockInTellsNearlyEqualNumbersApart) {
  RunningPayroll payroll;
  payroll.AddLine("12 I 7:00 am|12.5 I 7:05 am|12.5 I 7:10 am");
  payroll.Choose(mnuReClockInAllEmpls, "[?]*-> Yes\n[i]*All 2 employees*-> Ok");
  EXPECT_TRUE(payroll.Lines().ends_with("07:10 am|12 I 10:42 am|12.5 I 10:42 am"));
}

TEST(DayCommands, WriteOneLineForEachEmployeeClockedIn) {
  const std::string morning = "130 I 07:00 am|101 I 07:05 am|130 I 08:00 am";
  const struct {
    MenuItem& menu;
    std::string prompt, done, lines;
  } cases[] = {
      {mnuClockoutAllEmpls, "Clock out all Employees", "have been clocked out as of ",
       "|101 O 05:00 pm|130 O 05:00 pm"},
      {mnuReClockInAllEmpls, "ReClock in all Employees", "have been clocked back in as of ",
       "|101 I 05:00 pm|130 I 05:00 pm"},
  };
  for (const auto& [menu, prompt, done, lines] : cases) {
    SCOPED_TRACE(prompt);
    RunningPayroll payroll;
    const std::string title = menu.Caption;
    const std::string question =
        "[?] " + title + " | " + prompt + " at 10:42 am? | YesNoCancel -> ";
    const std::string no =
        question + "No\n[input] " + title + " | \\r" + prompt + " at 10:42 am? | 10:42 am -> ";
    const std::string all = "\n[i] " + title + " | All 2 employees " + done;
    payroll.Choose(menu, question +
                             "Yes\n[!] Ostrel Payroll | No employees clocked in on "
                             "11/18/04!\\rCan't run this job step. | Ok -> Ok");
    payroll.AddLine(morning);
    payroll.Choose(menu, question + "Cancel");
    EXPECT_EQ(payroll.Lines(), morning);
    payroll.Choose(menu, no + "5:00 pm" + all + "05:00 pm | Ok -> Ok");
    EXPECT_EQ(payroll.Lines(), morning + lines);
    payroll.Choose(menu, no + "06/14/04" + all + " | Ok -> Ok");
    EXPECT_TRUE(payroll.Lines().ends_with("12:00 am")) << payroll.Lines();
    txtToday.Text = "All";
    payroll.Choose(menu, "[!] Ostrel Payroll | The Date='All'!*-> Ok");
  }
}

TEST(DayCommands, TakeTheDayAsItIs) {
  RunningPayroll payroll;
  payroll.AddLine("999 I 7:00 am|130 I 6:00 am");
  for (const char* memo : {"entered first", "entered last"}) {  // in the same minute
    Payroll::FillBoxes(std::string("130|0||||2|||") + memo);
    cmdSave.Press();
  }
  payroll.AddLine("130 O 8:00 am");
  payroll.SetClock("11/18/04 12:30 pm");
  for (MenuItem* menu : {&mnuReClockInAllEmpls, &mnuClockoutAllEmpls}) {
    payroll.Choose(*menu, "[?]*-> Yes\n[i]*-> Ok");
  }
  const std::string lines = payroll.Fields("EMPL_NUMB EVENT_TYPE ETIME SORT_NAME ENTERPRISE MEMO");
  EXPECT_TRUE(
      lines.ends_with("|130,I,11/18/2004 12:30:00 PM,DURAND ANNE,2,entered last|"
                      "999,I,11/18/2004 12:30:00 PM,-,-,-|"
                      "130,O,11/18/2004 12:30:00 PM,DURAND ANNE,0, |"
                      "999,O,11/18/2004 12:30:00 PM, ,0, "))
      << lines;
}

TEST(MinimumWage, NamesWhoDoesNotEarnIt) {
  const std::string header =
      "] Minimum Wage Watch | 1234, Sample Ranch 11/18/04   at 11/18/04 10:42 am\\rActive "
      "Employees: ";
  const std::string all = "\\r\\rALL Employees earning minimum wage. | Ok -> Ok";
  const std::string below = " Employees not earning minimum wage.\\r   Employee#s: ";
  const std::string cases[][3] = {
      // with the employee on show, if any
      {"101 I 7:00 am|125 I 7:00 am|130 I 7:00 am|101 P 8:00 am 10 .5|125 P 8:00 am 100 10|"
       "130 P 8:00 am 1 .01|101 O 9:00 am|125 O 9:00 am|130 O 9:00 am",
       "",
       "[!" + header +
           "3\\rTotal Quantity: 111\\rTotal Gross: 1,005.01\\r    Ave Gross/Empl: 335.00\\r\\r2" +
           below + "101,130 | Ok -> Ok"},
      // The view counts for the totals, the day for the employees.
      {"101 I 7:00 am|125 I 7:00 am|101 P 8:00 am 10 .5|125 P 8:00 am 100 10|101 O 9:00 am|"
       "125 O 9:00 am",
       "125",
       "[!" + header +
           "2\\rTotal Quantity: 100\\rTotal Gross: 1,000.\\r    Ave Gross/Empl: 500.00\\r\\r1" +
           below + "101 | Ok -> Ok"},
      // The average of the day's piecework counts, and the wage itself is enough.
      {"101 I 7:00 am|101 P 8:00 am 1 1|101 I 9:00 am|101 P 9:30 am 1 26|101 O 11:00 am", "",
       "[i" + header + "1\\rTotal Quantity: 2\\rTotal Gross: 27.\\r    Ave Gross/Empl: 27.00" +
           all},
      {"101 I 7:00 am", "",
       "[i" + header + "1\\rTotal Quantity: 0\\rTotal Gross: .\\r    Ave Gross/Empl: .00" + all},
      {"", "", "[!]*No employees clocked in on 11/18/04!*-> Ok"},
  };
  for (const auto& [lines, onShow, shown] : cases) {
    SCOPED_TRACE(lines);
    RunningPayroll payroll;
    payroll.AddLine(lines);
    txtInput[kEmplBox].Text = onShow;
    if (!onShow.empty()) payroll.Choose(mnuDisplayCurrentEmpl);
    payroll.Choose(mnuMinWageWatch, shown);
    EXPECT_EQ(payroll.Fields("EVENT_TYPE").find('W'), std::string::npos);
    txtToday.Text = "All";
    payroll.Choose(mnuMinWageWatch, "[!] Ostrel Payroll | The Date='All'!*-> Ok");
  }
}

}  // namespace
}  // namespace ostrel
