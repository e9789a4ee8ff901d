// Commands over a whole crew, and the minimum wage watch.

#include <gtest/gtest.h>

#include "frame/app_state.h"
#include "support/dbf_builder.h"
#include "support/fault_vfs.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

TEST(ClockInACrew, SavesTheFormOnceForEachMember) {
  const struct {
    const char* comment;
    const char* answer;
    const char* shown;
    const char* lines;
  } cases[] = {
      {"Crew#2", "2",
       "2 -> 2\n[i] Clock In a Crew |  3 employees in Crew#2 have been clocked in. | Ok -> Ok",
       "101 I 10:42 am|125 I 10:42 am|130 I 10:42 am"},
      {"north # 1", "1a",
       "1 -> 1a\n[i] Clock In a Crew |  1 employees in Crew#1 have been clocked in. | Ok -> Ok",
       "140 I 10:42 am"},
      {"none", "0",
       "0 -> 0\n[i] Clock In a Crew | No Crew Number specified.\\rAborting job step. | Ok -> Ok",
       ""},
      {"#", "",
       "0 -> \n[i] Clock In a Crew | No Crew Number specified.\\rAborting job step. | Ok -> Ok",
       ""},
      {"#-2", "-2",
       "-2 -> -2\n[i] Clock In a Crew | No Employees on Crew Number -2\\rAborting job step. | Ok "
       "-> Ok",
       ""},
      {"#2", "3",
       "2 -> 3\n[i] Clock In a Crew | No Employees on Crew Number 3\\rAborting job step. | Ok -> "
       "Ok",
       ""},
      {"#.5", ".5",
       "0.5 -> .5\n[i] Clock In a Crew | No Employees on Crew Number 0.5\\rAborting job step. | Ok "
       "-> Ok",
       ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.answer);
    Payroll payroll;
    payroll.Start();
    txtComments.Text = test.comment;
    payroll.Desktop.WillType(test.answer);
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    payroll.Choose(mnuClockInACrew);
    EXPECT_EQ(payroll.Desktop.TakeShown(),
              std::string("[input] Clock In a Crew | \\rCrew Number to Clock In? | ") + test.shown);
    EXPECT_EQ(payroll.Lines(), test.lines);
    EXPECT_EQ(payroll.Desktop.Pointer(), MousePointer::Normal);
  }
}

/// Crews are numbers; whatever else the office's file holds in their place is no crew at all.
TEST(ClockInACrew, TakesTheCrewsAsTheOfficeWroteThem) {
  DbfBuilder table;
  table.Field("EMPL_NUMB", 'N', 6).Field("SORT_NAME", 'C', 15).Field("CREW", 'N', 4, 1);
  const char* const crews[] = {"2", "", "-2", "2.5", "****", "2.0", "1e1", "20"};
  for (int i = 0; i < 8; ++i) table.Row({std::to_string(101 + i), "NAME", crews[i]});
  Payroll payroll;
  payroll.Folder.Write("app/Prms1234.dbf", table.Bytes());
  payroll.Start();
  const struct {
    const char* crew;
    const char* employees;  // of the lines so far
  } cases[] = {{"2", "101|106"},
               {"-2", "101|106|103"},
               {"2.5", "101|106|103|104"},
               {"20 and a word", "101|106|103|104|108"},
               {"1", "101|106|103|104|108"}};
  for (const auto& test : cases) {
    payroll.Desktop.WillType(test.crew);
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    payroll.Choose(mnuClockInACrew);
    EXPECT_EQ(payroll.Fields("EMPL_NUMB"), test.employees) << test.crew;
  }
}

struct DayCommandCase {
  MenuItem& menu;
  const char* prompt;
  const char* done;  // behind the count
  const char* lines;
};

const char* const kMorning[] = {"130 I 7:00 am", "101 I 7:05 am", "130 I 8:00 am"};

TEST(DayCommands, WriteOneLineForEachEmployeeClockedIn) {
  const DayCommandCase cases[] = {
      {mnuClockoutAllEmpls, "Clock out all Employees", "have been clocked out as of ",
       "130 I 07:00 am|101 I 07:05 am|130 I 08:00 am|101 O 05:00 pm|130 O 05:00 pm"},
      {mnuReClockInAllEmpls, "ReClock in all Employees", "have been clocked back in as of ",
       "130 I 07:00 am|101 I 07:05 am|130 I 08:00 am|101 I 05:00 pm|130 I 05:00 pm"},
  };
  for (const auto& test : cases) {
    Payroll payroll;
    payroll.Start();
    const std::string title = test.menu.Caption;
    const std::string question =
        "[?] " + title + " | " + test.prompt + " at 10:42 am? | YesNoCancel -> ";
    const std::string input =
        "[input] " + title + " | \\r" + test.prompt + " at 10:42 am? | 10:42 am -> ";
    const std::string done = "[i] " + title + " | All 2 employees " + test.done;
    const auto run = [&](std::initializer_list<const char*> typed,
                         std::initializer_list<BoxAnswer> answers) {
      auto answer = answers.begin();
      if (answer != answers.end()) payroll.Desktop.WillAnswer(*answer++);
      for (const char* text : typed) payroll.Desktop.WillType(text);
      while (answer != answers.end()) payroll.Desktop.WillAnswer(*answer++);
      payroll.Choose(test.menu);
      EXPECT_EQ(payroll.Desktop.Pointer(), MousePointer::Normal);
      return payroll.Desktop.TakeShown();
    };
    EXPECT_EQ(run({}, {BoxAnswer::Yes, BoxAnswer::Ok}),
              question +
                  "Yes\n[!] Ostrel Payroll | No employees clocked in on 11/18/04!\\rCan't run this "
                  "job step. | Ok -> Ok");
    for (const char* line : kMorning) payroll.AddLine(line);
    const std::string before = ReadWholeFile(payroll.App("Prin1234.mdb"));
    EXPECT_EQ(run({}, {BoxAnswer::Cancel}), question + "Cancel");
    EXPECT_EQ(ReadWholeFile(payroll.App("Prin1234.mdb")), before);
    EXPECT_EQ(run({"5:00 pm"}, {BoxAnswer::No, BoxAnswer::Ok}),
              question + "No\n" + input + "5:00 pm\n" + done + "05:00 pm | Ok -> Ok");
    EXPECT_EQ(payroll.Lines(), test.lines);
    EXPECT_EQ(run({"06/14/04"}, {BoxAnswer::No, BoxAnswer::Ok}),
              question + "No\n" + input + "06/14/04\n" + done + " | Ok -> Ok");
    EXPECT_TRUE(payroll.Lines().ends_with("12:00 am")) << payroll.Lines();
    txtToday.Text = "All";
    EXPECT_EQ(run({}, {BoxAnswer::Ok}),
              "[!] Ostrel Payroll | The Date='All'!\\rSpecify the one day desired then rerun this "
              "job step. | Ok -> Ok");
  }
}

TEST(ReClockIn, CopiesTheLatestClockIn) {
  Payroll payroll;
  payroll.Start();
  txtInput[kEnterpriseBox].Text = "1";
  payroll.Save("130");
  payroll.SetClock("11/18/04 11:00 am");
  txtInput[kEnterpriseBox].Text = "2";
  txtInput[kMemoBox].Text = "SECOND";
  payroll.Save("130");
  payroll.SetClock("11/18/04 12:30 pm");
  payroll.Desktop.WillAnswer(BoxAnswer::Yes);
  payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  payroll.Choose(mnuReClockInAllEmpls);
  EXPECT_TRUE(payroll.Fields("EMPL_NUMB SORT_NAME ETIME ENTERPRISE MEMO ETIME_STOP")
                  .ends_with("|130,DURAND ANNE,11/18/2004 12:30:00 PM,2,SECOND,-"));
}

TEST(DayCommands, TakeTheDayAsItIs) {
  Payroll payroll;
  payroll.Start();
  for (const char* line : {"999 I 7:00 am", "130 I 7:00 am", "130 I 7:00 am", "130 O 8:00 am"}) {
    payroll.AddLine(line);
    LinesRs.MoveLast();
  }
  LinesRs.MovePrevious();
  LinesRs.Edit();
  LinesRs["MEMO"] = "entered last";
  LinesRs.Update();
  for (MenuItem* menu : {&mnuReClockInAllEmpls, &mnuClockoutAllEmpls}) {
    payroll.Desktop.WillAnswer(BoxAnswer::Yes);
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    payroll.Choose(*menu);
  }
  EXPECT_TRUE(payroll.Fields("EMPL_NUMB EVENT_TYPE SORT_NAME MEMO")
                  .ends_with("|130,O,-,-|130,I,-,entered last|999,I,-,-|130,O,DURAND ANNE, |"
                             "999,O, , "))
      << payroll.Fields("EMPL_NUMB EVENT_TYPE SORT_NAME MEMO");
}

/// Whatever the command had written when the disk filled up stays, and the operator hears of it once.
TEST(DayCommands, KeepWhatTheyHaveWrittenOnADiskThatIsFull) {
  constexpr int kEmployees = 300;
  for (const BoxAnswer answer : {BoxAnswer::Retry, BoxAnswer::Ignore}) {
    for (const int changes : {0, 4, 9}) {
      SCOPED_TRACE(changes);
      FaultVfs disk;
      Payroll payroll;
      payroll.Start();
      PrinDb.ShareCommits();
      for (int i = 0; i < kEmployees; ++i) payroll.AddLine(std::to_string(1001 + i) + " I 7:00 am");
      PrinDb.CommitShared();
      disk.FailAfter(changes, SQLITE_FULL, 1);
      payroll.Desktop.WillAnswer(BoxAnswer::Yes);
      payroll.Desktop.WillAnswer(answer);
      payroll.Desktop.WillAnswer(BoxAnswer::Ok);
      payroll.Choose(mnuClockoutAllEmpls);
      const std::string shown = payroll.Desktop.TakeShown();
      EXPECT_NE(shown.find("mnuClockoutAllEmpls_Click"), std::string::npos) << shown;
      EXPECT_NE(shown.find("full"), std::string::npos) << shown;
      EXPECT_TRUE(payroll.Desktop.AllAsked());
      const auto lines = static_cast<int>(PrinDb.OpenRecordset("OstrelPr").RowCount());
      EXPECT_GE(lines, 2 * kEmployees - (answer == BoxAnswer::Ignore ? 1 : 0));
      EXPECT_LE(lines, 2 * kEmployees);
    }
  }
}

TEST(MinimumWage, NamesWhoDoesNotEarnIt) {
  const struct {
    const char* what;
    std::vector<const char*> lines;
    const char* filter;  // employee on show, or empty
    const char* shown;
  } cases[] = {
      {"two below",
       {"101 I 7:00 am", "125 I 7:00 am", "130 I 7:00 am", "101 P 8:00 am 10 .5",
        "125 P 8:00 am 100 10", "130 P 8:00 am 1 .01", "101 O 9:00 am", "125 O 9:00 am",
        "130 O 9:00 am"},
       "",
       "[!] Minimum Wage Watch | 1234, Sample Ranch 11/18/04   at 11/18/04 10:42 am\\rActive "
       "Employees: 3\\r"
       "Total Quantity: 111\\rTotal Gross: 1,005.01\\r    Ave Gross/Empl: 335.00\\r\\r"
       "2 Employees not earning minimum wage.\\r   Employee#s: 101,130 | Ok -> Ok"},
      {"the view counts for the totals, the day for the employees",
       {"101 I 7:00 am", "125 I 7:00 am", "101 P 8:00 am 10 .5", "125 P 8:00 am 100 10",
        "101 O 9:00 am", "125 O 9:00 am"},
       "125",
       "[!] Minimum Wage Watch | 1234, Sample Ranch 11/18/04   at 11/18/04 10:42 am\\rActive "
       "Employees: 2\\r"
       "Total Quantity: 100\\rTotal Gross: 1,000.\\r    Ave Gross/Empl: 500.00\\r\\r"
       "1 Employees not earning minimum wage.\\r   Employee#s: 101 | Ok -> Ok"},
      {"the average of the day's piecework counts, and the wage itself is enough",
       {"101 I 7:00 am", "101 P 8:00 am 1 1", "101 I 9:00 am", "101 P 9:30 am 1 26",
        "101 O 11:00 am"},
       "",
       "[i] Minimum Wage Watch | 1234, Sample Ranch 11/18/04   at 11/18/04 10:42 am\\rActive "
       "Employees: 1\\r"
       "Total Quantity: 2\\rTotal Gross: 27.\\r    Ave Gross/Empl: 27.00\\r\\rALL Employees "
       "earning minimum wage. | Ok -> Ok"},
      {"hours alone",
       {"101 I 7:00 am"},
       "",
       "[i] Minimum Wage Watch | 1234, Sample Ranch 11/18/04   at 11/18/04 10:42 am\\rActive "
       "Employees: 1\\r"
       "Total Quantity: 0\\rTotal Gross: .\\r    Ave Gross/Empl: .00\\r\\rALL Employees earning "
       "minimum wage. | Ok -> Ok"},
      {"nobody",
       {},
       "",
       "[!] Ostrel Payroll | No employees clocked in on 11/18/04!\\rCan't run this job step. | Ok "
       "-> Ok"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    Payroll payroll;
    payroll.Start();
    for (const char* line : test.lines) payroll.AddLine(line);
    txtInput[kEmplBox].Text = test.filter;
    if (*test.filter != '\0') payroll.Choose(mnuDisplayCurrentEmpl);
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    payroll.Choose(mnuMinWageWatch);
    EXPECT_EQ(payroll.Desktop.TakeShown(), test.shown);
    EXPECT_EQ(payroll.Fields("EVENT_TYPE").find('W'), std::string::npos);
  }
}

}  // namespace
}  // namespace ostrel
