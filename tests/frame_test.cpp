// Start-up, settings and failure reporting.

#include <gtest/gtest.h>

#include <filesystem>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
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
  Payroll payroll;  // the office's names may come in any case; one without a client is passed over
  fs::rename(payroll.App("Prms1234.dbf"), payroll.App("PRMS1234.DBF"));
  fs::copy(payroll.App("Hvcl1234.dbf"), payroll.App("Hvcl.dbf"));
  payroll.Desktop.Expect("", [&] { payroll.Start(); });
  EXPECT_EQ(Line({lblClient.Caption, txtToday.Text, lblToday.Caption, lblMinWage.Caption,
                  lblLineCt.Caption}),
            "1234, Sample Ranch / 11/18/04 / Thursday / 6.75 / 0 lines");
  EXPECT_TRUE(fs::exists(payroll.App("Prin1234.mdb")));
  EXPECT_TRUE(PrinDbOpen && DescDbOpen && mnuClockInACrew.Enabled);
  EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  payroll.Save("130");
  payroll.Stop();
  payroll.Desktop.SetCtrlKey(true);  // rebuilds the index, keeps the lines
  payroll.Desktop.Expect("", [&] { payroll.Start(); });
  EXPECT_EQ(payroll.Lines() + payroll.Fields("SORT_NAME"), "130 I 10:42 amDURAND ANNE");
}

TEST(StartUp, EndsBeforeTheStoreIsTouchedWhereATableIsMissing) {
  for (const char* word : {"Prms", "Glen", "Glod", "Gleq"}) {
    Payroll payroll;
    const std::string table = payroll.App(word + std::string("1234.dbf"));
    fs::remove(table);
    payroll.Desktop.Expect("[x] Ostrel Payroll | " + table + " not found. | Ok -> Ok",
                           [&] { EXPECT_THROW(payroll.Start(), ProgramEnded); });
    EXPECT_FALSE(fs::exists(payroll.App("Prin1234.mdb")));
  }
}

TEST(Settings, AreReadAsTheOfficesFileHasThem) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "8:00 am / 5:00 pm / plain / auto / Crew#2"},
      {"UseTimeClock=True\r\nAutosetTime=False\r\nComments=Crew#7\r\n",
       "8:00 am / 5:00 pm / clock / hand / Crew#7"},
      {"UseTimeClock=true\r\nDefault Clock In=7:30\r\n",
       "07:30 am / 5:00 pm / plain / auto / Crew#2"},
      {"Default Clock Out=06/14/04 4 pm\r\nComments=\r\n",
       "8:00 am / 04:00 pm / plain / auto / Crew#2"},
  };
  for (const auto& [keys, state] : cases) {
    SCOPED_TRACE(keys);
    Payroll payroll;
    payroll.WriteIni(keys);
    payroll.Start();
    EXPECT_EQ(Line({DefaultClockIn, DefaultClockOut, mnuUseTimeClock.Checked ? "clock" : "plain",
                    mnuAutosetTime.Checked ? "auto" : "hand", txtComments.Text}),
              state);
    EXPECT_EQ(CurTimeCtl1.Visible.Get(), mnuAutosetTime.Checked.Get());
    EXPECT_EQ(lblClockOff.Visible.Get(), !mnuAutosetTime.Checked);
    EXPECT_EQ(mnuDefaultClockIn.Caption.Get(), "Default Clock In=" + DefaultClockIn);
  }
}

TEST(Settings, ComeBackAfterTheFormCloses) {
  RunningPayroll payroll;
  const std::string in = "[input] Set Default Clock In Time | \\rDefault Clock In Time? | ";
  const std::string out = "[input] Set Default Clock Out Time | \\rDefault Clock Out Time? | ";
  const std::string half = "\n[?] 'am' or 'pm' not specified | ";
  const struct {
    MenuItem& menu;
    std::string shown;
    const char* caption;
  } cases[] = {
      {mnuDefaultClockIn, in + "8:00 am -> 8", "Default Clock In=8:00 am"},
      {mnuDefaultClockIn, in + "8:00 am -> 06/14/04", "Default Clock In=8:00 am"},
      {mnuDefaultClockIn, in + "8:00 am -> 2:30 pm", "Default Clock In=02:30 pm"},
      {mnuDefaultClockIn, in + "02:30 pm -> 8:00" + half + "8:00 am? | YesNo -> Yes",
       "Default Clock In=08:00 am"},
      {mnuDefaultClockOut, out + "5:00 pm -> 5:00" + half + "5:00 pm? | YesNo -> No",
       "Default Clock Out=05:00 am"},
      {mnuDefaultClockOut, out + "05:00 am -> 5:00" + half + "5:00 pm? | YesNo -> Yes",
       "Default Clock Out=05:00 pm"},
  };
  for (const auto& [menu, shown, caption] : cases) {
    payroll.Choose(menu, shown);
    EXPECT_EQ(menu.Caption.Get(), caption);
  }
  payroll.Choose(mnuAutosetTime);
  txtComments.Text = "Crew#3 north";
  payroll.Stop();
  EXPECT_EQ(
      payroll.Ini(),
      "[Ostrel Remote]\r\nRemote Files Floppy=" + payroll.Disk() +
          "\r\nUseTimeClock=True\r\nDefault Clock In=08:00 am\r\nDefault Clock Out=05:00 pm\r\n"
          "AutosetTime=False\r\nComments=Crew#3 north\r\n");
}

class Reporting : public testing::Test {
 protected:
  /// Reports a failure to an operator who sees and answers as told.
  ///   returns  whether it is to be tried again
  bool Retries(std::int32_t number, const std::string& shown, std::int32_t line = 6520) {
    std::string message = "Duplicate value.";
    std::int16_t answer = 7;
    Office.Desktop.Expect(shown, [&] {
      DisplayErrMessage(number, message, line, "WriteValues", ScannerModule, answer);
    });
    EXPECT_TRUE(answer == 0 || answer == -1) << answer;
    return answer != 0;
  }
  std::string Log() const { return Office.Folder.Read("app/Errors.Log"); }

  RunningPayroll Office;
  const std::string Title = "[!] PROGRAM or DATA ERROR: PHONE SUPPORT - NOW!! | ";
};

TEST_F(Reporting, SaysAndLogsWhatHappenedToTheBlank) {
  Office.Folder.Write(std::string("app/OstrelPayroll") + kExecutableExtension, "");
  const std::string app = Office.App();
  const std::string where =
      "   Client# 1234  in " + app.substr(0, app.size() - 1) + "  on 11/18/2004 10:42:00 AM *Opr ";
  const std::string site = " in Line# 6520 in routine 'WriteValues' in module 'Scanner'";
  const std::string message = "Duplicate value. (Err#3022)" + site;
  const auto shown = [&](const std::string& text, const char* answer) {
    return Title + text + "   (" + app + "OstrelPayroll" + kExecutableExtension +
           " Tq4 version dated: */20*) | AbortRetryIgnore -> " + answer;
  };
  EXPECT_TRUE(Retries(3022, shown(message, "Retry")));
  std::string log = message + "\r\n" + where + "Retried Error\r\n";
  EXPECT_EQ(Log(), log);

  const std::string rights =
      "If you are trying to create a new company on a network drive, you must have 'SUPERVISOR' "
      "rights.";
  EXPECT_FALSE(Retries(75, shown("Duplicate value. (Err#75)" + site + "\\r" + rights, "Ignore")));
  log += "Duplicate value. (Err#75)" + site + "\r\n   " + rights + "\r\n" + where;
  EXPECT_EQ(Log(), log + "Ignored Error\r\n");
  const std::string indexes = "\\rDo Tools!Rebuild Indexes to correct the problem.";
  EXPECT_THROW(Retries(-3274, shown("*" + site + indexes, "Abort")), ProgramEnded);
  EXPECT_TRUE(Log().ends_with(where + "Aborted Job\r\n"));
  fs::remove(Office.App("Errors.Log"));
  EXPECT_FALSE(Retries(16, ""));
  EXPECT_EQ(Log(), "");
}

TEST_F(Reporting, GivesALockTenSeconds) {
  const std::string conflict =
      "[!] Multiuser operation conflict. | Data locked (being used exclusively) by another user. "
      "Duplicate value.*-> ";
  for (const std::int32_t number : {70, 725, 3008, 3020, 3043, 3186, 3218, 3260}) {
    SCOPED_TRACE(number);
    ResetFailureReporting();
    UserCount = 2;
    Office.SetClock("11/18/04 11:59:55 pm");
    EXPECT_TRUE(Retries(number, ""));  // first failure of the site
    Office.Desktop.PassSeconds(9);     // past midnight, where the clock starts again
    EXPECT_TRUE(Retries(number, ""));
    Office.Desktop.PassSeconds(1);
    EXPECT_TRUE(Retries(number, conflict + "Retry"));
    EXPECT_FALSE(Retries(number, conflict + "Ignore"));  // and at once from now on
    EXPECT_TRUE(Retries(number, "", 6530));              // another site, ten seconds of its own
    UserCount = 1;
    EXPECT_FALSE(Retries(number, Title + "*-> Ignore"));
  }
}

TEST_F(Reporting, TurnsEveryFaultIntoAReportEvenWithoutALog) {
  fs::create_directory(Office.App("Errors.Log"));
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[] { throw std::bad_alloc(); }, "(Err#7)"},
      {[] { (void)std::string().at(3); }, "(Err#9)"},
      {[] { throw std::logic_error("broken"); }, "(Err#51)"}};
  for (const auto& [fault, number] : cases) {
    constexpr FailureTail statement{ScannerModule, "cmdSave_Click"};
    int runs = 0;
    const std::string report = "[!]*" + number + " in Line# 310 in routine 'cmdSave_Click'*-> ";
    testing::internal::CaptureStderr();
    Office.Desktop.Expect(report + "Retry\n" + report + "Ignore", [&] {
      statement(310, [&] {
        ++runs;
        fault();
      });
    });
    EXPECT_EQ(runs, 2);
    EXPECT_TRUE(testing::internal::GetCapturedStderr().ends_with("*Opr Ignored Error\r\n"));
  }
}

}  // namespace
}  // namespace ostrel
