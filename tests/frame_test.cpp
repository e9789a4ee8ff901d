// Start-up, settings and failure reporting.

#include <gtest/gtest.h>

#include <filesystem>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/settings.h"
#include "frame/start_up.h"
#include "platform/files/files.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

std::string Line(std::initializer_list<std::string> parts) {
  std::string line;
  for (const std::string& part : parts) line += (line.empty() ? "" : " / ") + part;
  return line;
}

TEST(StartUp, ShowsTheClientAndTheDay) {
  Payroll payroll;
  payroll.Start();
  EXPECT_EQ(Line({lblClient.Caption, txtToday.Text, lblToday.Caption, lblMinWage.Caption,
                  lblLineCt.Caption}),
            "1234, Sample Ranch / 11/18/04 / Thursday / 6.75 / 0 lines");
  EXPECT_TRUE(fs::exists(payroll.App("Prin1234.mdb")));
  EXPECT_TRUE(PrinDbOpen && DescDbOpen && mnuClockInACrew.Enabled);
  EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  EXPECT_EQ(TDBGrid1.Left + TDBGrid1.ColumnLeft(0), 420);
  EXPECT_EQ(payroll.Desktop.TakeShown(), "");
  payroll.Save("130");
  payroll.Stop();
  payroll.Desktop.SetCtrlKey(true);  // rebuilds the index, keeps the lines
  payroll.Start();
  EXPECT_EQ(payroll.Lines(), "130 I 10:42 am");
  EXPECT_EQ(payroll.Desktop.TakeShown(), "");
}

TEST(StartUp, EndsBeforeTheStoreIsTouchedWhereATableIsMissing) {
  for (const char* word : {"Prms", "Glen", "Glod", "Gleq"}) {
    Payroll payroll;
    fs::remove(payroll.App(word + std::string("1234.dbf")));
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    EXPECT_THROW(payroll.Start(), ProgramEnded);
    EXPECT_EQ(payroll.Desktop.TakeShown(), "[x] Ostrel Payroll | " +
                                               payroll.App(word + std::string("1234.dbf")) +
                                               " not found. | Ok -> Ok");
    EXPECT_FALSE(fs::exists(payroll.App("Prin1234.mdb")));
  }
}

TEST(StartUp, FindsTheTablesInAnyCaseAndPassesOverABareName) {
  Payroll payroll;
  fs::rename(payroll.App("Prms1234.dbf"), payroll.App("PRMS1234.DBF"));
  fs::copy(payroll.App("Hvcl1234.dbf"), payroll.App("Hvcl.dbf"));
  payroll.Start();
  EXPECT_EQ(ClientNumb, "1234");
  payroll.Save("130");
  EXPECT_EQ(payroll.Fields("SORT_NAME"), "DURAND ANNE");
}

TEST(StartUp, RefusesAStoreThatIsNotOursAndLeavesItAlone) {
  const struct {
    const char* what;
    std::string content;
    const char* number;
  } cases[] = {{"empty", "", "(Err#3343)"}, {"text", std::string(5000, 'x'), "(Err#3343)"}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    Payroll payroll;
    payroll.Folder.Write("app/Prin1234.mdb", test.content);
    payroll.Desktop.WillAnswer(BoxAnswer::Abort);
    EXPECT_THROW(payroll.Start(), ProgramEnded);
    EXPECT_NE(payroll.Desktop.TakeShown().find(test.number), std::string::npos);
    EXPECT_EQ(payroll.Folder.Read("app/Prin1234.mdb"), test.content);
  }
}

TEST(Settings, AreReadAsTheOfficesFileHasThem) {
  const struct {
    const char* keys;
    const char* state;  // clock-in, clock-out, layout, autoset, comment
  } cases[] = {
      {"", "8:00 am / 5:00 pm / plain / auto / Crew#2"},
      {"UseTimeClock=True\r\nAutosetTime=False\r\nComments=Crew#7\r\n",
       "8:00 am / 5:00 pm / clock / hand / Crew#7"},
      {"UseTimeClock=true\r\nDefault Clock In=7:30\r\n",
       "07:30 am / 5:00 pm / plain / auto / Crew#2"},
      {"Default Clock Out=06/14/04 4 pm\r\nComments=\r\n",
       "8:00 am / 04:00 pm / plain / auto / Crew#2"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.keys);
    Payroll payroll;
    payroll.WriteIni(test.keys);
    payroll.Start();
    EXPECT_EQ(Line({DefaultClockIn, DefaultClockOut, mnuUseTimeClock.Checked ? "clock" : "plain",
                    mnuAutosetTime.Checked ? "auto" : "hand", txtComments.Text}),
              test.state);
    EXPECT_EQ(CurTimeCtl1.Visible.Get(), mnuAutosetTime.Checked.Get());
    EXPECT_EQ(lblClockOff.Visible.Get(), !mnuAutosetTime.Checked);
    EXPECT_EQ(mnuDefaultClockIn.Caption.Get(), "Default Clock In=" + DefaultClockIn);
  }
}

TEST(Settings, ComeBackAfterTheFormCloses) {
  Payroll payroll;
  payroll.Start();
  const struct {
    MenuItem& menu;
    const char* answer;
    BoxAnswer half;  // Ok: not asked
    const char* caption;
  } cases[] = {
      {mnuDefaultClockIn, "8", BoxAnswer::Ok, "Default Clock In=8:00 am"},
      {mnuDefaultClockIn, "06/14/04", BoxAnswer::Ok, "Default Clock In=8:00 am"},
      {mnuDefaultClockIn, "2:30 pm", BoxAnswer::Ok, "Default Clock In=02:30 pm"},
      {mnuDefaultClockIn, "8:00", BoxAnswer::Yes, "Default Clock In=08:00 am"},
      {mnuDefaultClockOut, "5:00", BoxAnswer::No, "Default Clock Out=05:00 am"},
      {mnuDefaultClockOut, "5:00", BoxAnswer::Yes, "Default Clock Out=05:00 pm"},
  };
  for (const auto& test : cases) {
    payroll.Desktop.WillType(test.answer);
    if (test.half != BoxAnswer::Ok) payroll.Desktop.WillAnswer(test.half);
    payroll.Choose(test.menu);
    EXPECT_EQ(test.menu.Caption.Get(), test.caption);
  }
  EXPECT_EQ(payroll.Desktop.Shown().back(),
            "[?] 'am' or 'pm' not specified | 5:00 pm? | YesNo -> Yes");
  EXPECT_EQ(payroll.Desktop.Shown().front(),
            "[input] Set Default Clock In Time | \\rDefault Clock In Time? | 8:00 am -> 8");
  payroll.Choose(mnuAutosetTime);
  txtComments.Text = "Crew#3 north";
  payroll.Stop();
  EXPECT_EQ(
      payroll.Ini(),
      "[Ostrel Remote]\r\nRemote Files Floppy=" + payroll.Disk() +
          "\r\nUseTimeClock=True\r\nDefault Clock In=08:00 am\r\nDefault Clock Out=05:00 pm\r\n"
          "AutosetTime=False\r\nComments=Crew#3 north\r\n");
}

struct Report {
  std::int16_t Answer = 7;
  std::string Shown, Log;
};

Report Reported(Payroll& payroll, std::int32_t number, const char* routine = "WriteValues",
                std::int32_t line = 6520) {
  std::string message = "Duplicate value.";
  Report report;
  DisplayErrMessage(number, message, line, routine, ScannerModule, report.Answer);
  report.Shown = payroll.Desktop.TakeShown();
  report.Log = payroll.Folder.Read("app/Errors.Log");
  return report;
}

TEST(FailureReporting, SaysAndLogsWhatHappenedToTheBlank) {
  Payroll payroll;
  payroll.Start();
  payroll.Folder.Write(std::string("app/OstrelPayroll") + kExecutableExtension, "");
  const std::string where = "   Client# 1234  in " +
                            payroll.App("").substr(0, payroll.App("").size() - 1) +
                            "  on 11/18/2004 10:42:00 AM";
  const std::string message =
      "Duplicate value. (Err#3022) in Line# 6520 in routine 'WriteValues' in module 'Scanner'";
  payroll.Desktop.WillAnswer(BoxAnswer::Retry);
  Report report = Reported(payroll, 3022);
  EXPECT_EQ(report.Answer, -1);
  EXPECT_EQ(report.Log, message + "\r\n" + where + " *Opr Retried Error\r\n");
  EXPECT_TRUE(report.Shown.starts_with("[!] PROGRAM or DATA ERROR: PHONE SUPPORT - NOW!! | " +
                                       message + "   (" + payroll.App("OstrelPayroll") +
                                       " Tq4 version dated: "))
      << report.Shown;
  EXPECT_TRUE(report.Shown.ends_with(") | AbortRetryIgnore -> Retry"));

  fs::remove(payroll.App("Errors.Log"));
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
  report = Reported(payroll, 75);
  EXPECT_EQ(report.Answer, 0);
  EXPECT_EQ(
      report.Log,
      "Duplicate value. (Err#75) in Line# 6520 in routine 'WriteValues' in module 'Scanner'\r\n"
      "   If you are trying to create a new company on a network drive, you must have 'SUPERVISOR' "
      "rights.\r\n" +
          where + " *Opr Ignored Error\r\n");

  payroll.Desktop.WillAnswer(BoxAnswer::Abort);
  EXPECT_THROW(Reported(payroll, -3274), ProgramEnded);
  EXPECT_TRUE(payroll.Folder.Read("app/Errors.Log").ends_with(where + " *Opr Aborted Job\r\n"));
}

TEST(FailureReporting, PassesOverNumberSixteen) {
  Payroll payroll;
  payroll.Start();
  const Report report = Reported(payroll, 16);
  EXPECT_EQ(report.Answer, 0);
  EXPECT_EQ(report.Shown + report.Log, "");
}

TEST(FailureReporting, GivesALockTenSeconds) {
  Payroll payroll;
  payroll.Start();
  for (const std::int32_t number : {70, 725, 3008, 3020, 3043, 3186, 3218, 3260}) {
    SCOPED_TRACE(number);
    ResetFailureReporting();
    UserCount = 2;
    payroll.SetClock("11/18/04 11:59:55 pm");
    EXPECT_EQ(Reported(payroll, number).Answer, -1);  // first failure of the site
    payroll.Desktop.PassSeconds(9);                   // past midnight, where the clock starts again
    EXPECT_EQ(Reported(payroll, number).Shown, "");
    payroll.Desktop.PassSeconds(1);
    payroll.Desktop.WillAnswer(BoxAnswer::Retry);
    EXPECT_TRUE(Reported(payroll, number)
                    .Shown.starts_with("[!] Multiuser operation conflict. | Data locked (being "
                                       "used exclusively) by another user. Duplicate"));
    payroll.Desktop.WillAnswer(BoxAnswer::Ignore);  // and at once from now on
    EXPECT_NE(Reported(payroll, number, "WriteValues").Shown, "");
    EXPECT_EQ(Reported(payroll, number, "WriteValues", 6530).Shown,
              "");  // another site, ten seconds of its own
    UserCount = 1;
    payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
    EXPECT_TRUE(Reported(payroll, number).Shown.starts_with("[!] PROGRAM or DATA ERROR"));
  }
  EXPECT_GT(payroll.Desktop.EventPasses(), 0);
}

TEST(FailureReporting, ReachesTheOperatorWhereTheLogCannotBeWritten) {
  Payroll payroll;
  payroll.Start();
  fs::create_directory(payroll.App("Errors.Log"));
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
  testing::internal::CaptureStderr();
  constexpr FailureTail statement{ScannerModule, "cmdSave_Click"};
  statement(310, [] { throw Failure(3022, "Duplicate value."); });
  EXPECT_EQ(payroll.Desktop.Shown().size(), 1U);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("*Opr Ignored Error"), std::string::npos);
}

TEST(FailureReporting, TurnsEveryFaultIntoAReport) {
  Payroll payroll;
  payroll.Start();
  const struct {
    std::function<void()> fault;
    const char* number;
  } cases[] = {{[] { throw std::bad_alloc(); }, "(Err#7)"},
               {[] { (void)std::string().at(3); }, "(Err#9)"},
               {[] { throw std::logic_error("broken"); }, "(Err#51)"}};
  for (const auto& test : cases) {
    constexpr FailureTail statement{ScannerModule, "cmdSave_Click"};
    int runs = 0;
    payroll.Desktop.WillAnswer(BoxAnswer::Retry);
    payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
    statement(310, [&] {
      ++runs;
      test.fault();
    });
    EXPECT_EQ(runs, 2);
    EXPECT_NE(payroll.Desktop.TakeShown().find(test.number), std::string::npos);
  }
}

}  // namespace
}  // namespace ostrel
