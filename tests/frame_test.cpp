// Start-up, the first run, settings and failure reporting.

#include <gtest/gtest.h>

#include <filesystem>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/files/files.h"
#include "platform/values/text.h"
#include "program/first_run.h"
#include "scan_main/scan_main.h"
#include "support/agreeing_desktop.h"
#include "support/odd_files.h"
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
  payroll.Desktop.HoldsCtrl = true;  // rebuilds the index, keeps the lines
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

TEST(StartUp, LeavesWhatStandsUnderTheNameOfTheStoreAndIsNone) {
  const std::pair<const char*, const char*> places[] = {{"Prin1234.mdb", "3024"},
                                                        {"Prin1234.mdb-journal", "75"}};
  for (const auto& [name, number] : places) {
    for (const std::string kind : kOddFiles) {
      SCOPED_TRACE(name + (" " + kind));
      Payroll payroll;
      payroll.Start();
      payroll.Save("130");
      payroll.Stop();
      PutOddFile(kind, payroll.App(name));
      const fs::file_type before = fs::symlink_status(payroll.App(name)).type();
      const std::string report = payroll.App(name) + "*(Err#" + number + ") in Line# 13070*-> ";
      payroll.Desktop.Expect("[!]*" + report + "Abort",
                             [&] { EXPECT_THROW(payroll.Start(), ProgramEnded); });
      EXPECT_EQ(fs::symlink_status(payroll.App(name)).type(), before);
    }
  }
}

TEST(StartUp, PutsInOrderWhatItFindsInTheFolder) {
  Payroll payroll;
  payroll.Start();
  payroll.Save("130");
  payroll.Stop();
  fs::copy(payroll.App("Prms1234.dbf"), payroll.App("Glod9999.old"));
  const std::string cleared = payroll.Folder.Read("app/Glod9999.old");
  std::string paid = cleared;
  paid.replace(paid.find("0.00"), 4, "7.65");
  for (const char* folder : {"app/Printed", "app/.ostrel-new", "app/.ostrel-old",
                             "app/.ostrel-ready", "app/.ostrel-ready/Prms1234.x"}) {
    fs::create_directory(payroll.Folder.Path(folder));
  }
  const char* const hidden[] = {
      "app/Prin1234.mdb", "app/Prin1234.mdb-journal", "app/Errors.Log",  "app/Printed/Old.pdf",
      "app/PRMS9999.DBF", "app/Prms1234.bak",         "app/Glen1234.fpt"};
  for (const char* name : hidden) {
    if (name != hidden[0])
      payroll.Folder.Write(name, SameText(name, "app/Glen1234.fpt") ? "" : paid);
    fs::permissions(payroll.Folder.Path(name), fs::perms(0644));
  }
  payroll.Folder.Write("app/Prin1234.mdb-journal", "");
  payroll.Folder.Write("app/.ostrel-ready/Glen1234.cdx", "finished");
  for (const char* alien : {"Prin1234.mdb", "Ostrel", "Prms1234.*"}) {
    payroll.Folder.Write(std::string("app/.ostrel-ready/") + alien, "alien");
  }
  const char* const left[] = {"app/~0123456789abcdef.tmp", "config/~123456789.tmp",
                              "disk/~fedcba9876543210.tmp", "app/.ostrel-new/Prms1234.dbf"};
  for (const char* name : left) payroll.Folder.Write(name, paid);
  for (const char* foreign : {"config/~x.tmp", "config/~.tmp"}) payroll.Folder.Write(foreign, "");

  payroll.Desktop.Expect("", [&] { payroll.Start(); });
  EXPECT_EQ(payroll.Lines(), "130 I 10:42 am");
  for (const char* name : hidden) {
    EXPECT_EQ(static_cast<int>(fs::status(payroll.Folder.Path(name)).permissions()), 0600) << name;
  }
  for (const char* name : {"app/PRMS9999.DBF", "app/Prms1234.bak"}) {
    EXPECT_EQ(payroll.Folder.Read(name), cleared) << name;
  }
  EXPECT_EQ(payroll.Folder.Read("app/Glen1234.cdx"), "finished");
  for (const char* name : left) EXPECT_FALSE(fs::exists(payroll.Folder.Path(name))) << name;
  for (const char* name : {".ostrel-new", ".ostrel-old", ".ostrel-ready", "Ostrel"}) {
    EXPECT_FALSE(fs::exists(payroll.App(name))) << name;
  }
  EXPECT_TRUE(fs::exists(payroll.Folder.Path("config/~x.tmp")));

  payroll.Stop();  // tables without pay stay the files that they are
  const std::string witness = payroll.Folder.Path("config/table");
  fs::create_hard_link(payroll.App("Prms1234.bak"), witness);
  payroll.Folder.Write("app/Prms1234.dbf", payroll.Folder.Read("app/Prms1234.dbf"));
  payroll.Folder.Write("app/Gleq1234.bak", paid.substr(0, 400));
  payroll.Desktop.Expect("[!]*Gleq1234.bak*stays in it. (Err#3274) in Line# 12950*-> Ignore",
                         [&] { payroll.Start(); });
  EXPECT_TRUE(fs::equivalent(witness, payroll.App("Prms1234.bak")));
}

TEST(StartUp, RefusesOnceAClientThatNoTableCanBeNamedBy) {
  Payroll payroll;
  for (const char* word : {"Hvcl", "Prms", "Glen", "Glod", "Gleq"}) {
    fs::rename(payroll.App(word + std::string("1234.dbf")),
               payroll.App(word + std::string("12-4.dbf")));
  }
  payroll.Desktop.Expect("[x] Ostrel Payroll | No company information found. ('12-4'*) | Ok -> Ok",
                         [&] { EXPECT_THROW(payroll.Start(), ProgramEnded); });
  EXPECT_FALSE(fs::exists(payroll.App("Prin12-4.mdb")));
}

TEST(FirstRun, ExplainsItselfAndShowsTheManualOnYes) {
  const std::string question =
      "[?] Orveth Ostrel Payroll Program | Orveth's Ostrel Payroll program lets a foreman "
      "enter a crew's payroll timecard information on a laptop computer in the field.\\rThat data "
      "then is imported into a computer in the office that is running Halvane Accounting.\\r\\r"
      "Would you like to view the short manual with more information? | YesNoCancel -> ";
  const std::string cannot = "\n[i] Cannot display the manual on this computer | ";
  const std::string contact = "\\rContact Orveth to have them mail or email a manual to you.";
  const TempFolder app;
  SetExecutable(app.Path(), "OstrelPayroll");
  const std::string manual = app.Path("manual.html");
  const std::pair<std::string, std::string> cases[] = {
      {"manual viewer", "No"},
      {"manual viewer", "Cancel"},
      {"manual viewer", "Yes\n[document] " + manual},
      {"viewer", "Yes" + cannot + manual + "\\rManual not found, either reinstall programs or" +
                     contact + " | Ok -> Ok"},
      {"manual",
       "Yes\n[document] " + manual + cannot +
           "Microsoft Word program not installed on this computer so cannot display the ostrel "
           "payroll manual." +
           contact + " (The manual is also here, for any web browser: " + manual + ") | Ok -> Ok"},
  };
  for (const auto& [has, shown] : cases) {
    SCOPED_TRACE(shown);
    ScriptedDesktop desktop;
    std::filesystem::remove(manual);
    if (has.starts_with("manual")) app.Write("manual.html", "<p>Manual</p>");
    const std::string before = app.Contents();
    desktop.HasViewer = has.ends_with("viewer");
    bool ended = false;
    desktop.Expect(question + shown, [&] {
      try {
        ExitWShowManual();
      } catch (const ProgramEnded&) {
        ended = true;
      }
    });
    EXPECT_EQ(ended, shown != "No");
    EXPECT_EQ(desktop.Beeps, 1);
    EXPECT_EQ(app.Contents(), before);
  }
  SetExecutable({}, {});
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

TEST(Settings, ThatCannotBeReadAreReportedOnceAndLeftAlone) {
  for (const std::string kind : kOddFiles) {
    SCOPED_TRACE(kind);
    Payroll payroll;
    const std::string ini = payroll.Folder.Path("config/Halvane.ini"), good = payroll.Ini();
    PutOddFile(kind, ini);
    const std::string report = "[!]*" + ini + "*(Err#75) in Line# 1004 in routine 'Form_Load'*-> ";
    payroll.Desktop.Expect(report + "Retry\n" + report + "Ignore", [&] { payroll.Start(); });
    EXPECT_EQ(lblClient.Caption.Get() + " " + DefaultClockIn, "1234, Sample Ranch 8:00 am");
    EXPECT_TRUE(ContainsText(payroll.Folder.Read("app/Errors.Log"), "*Opr Retried Error"));
    fs::remove_all(ini);
    WriteWholeFile(ini, good);
    payroll.Stop();
    EXPECT_EQ(payroll.Ini(), good) << "settings that were never read are not written";

    PutOddFile(kind, ini);
    AgreeingDesktop desktop(payroll.Desktop, BoxAnswer::Retry);
    desktop.OnReport = [&](const std::string&) {
      fs::remove_all(ini);
      WriteWholeFile(ini, good);
      return BoxAnswer::Retry;
    };
    payroll.Start();
    EXPECT_EQ(desktop.Reports.size(), 1U);
    EXPECT_EQ(RemoteDrive, payroll.Disk());
    EXPECT_TRUE(mnuUseTimeClock.Checked);
  }
}

TEST(Settings, ComeBackAfterTheFormCloses) {
  RunningPayroll payroll;
  const std::string half = "\n[?] 'am' or 'pm' not specified | ";
  const std::string cases[][3] = {
      {"In", "8:00 am -> 8", "8:00 am"},
      {"In", "8:00 am -> 06/14/04", "8:00 am"},
      {"In", "8:00 am -> 2:30 pm", "02:30 pm"},
      {"In", "02:30 pm -> 14:31" + half + "14:31 am? | YesNo -> Yes", "02:31 pm"},
      {"In", "02:31 pm -> 8:00" + half + "8:00 am? | YesNo -> Yes", "08:00 am"},
      {"Out", "5:00 pm -> 5:00" + half + "5:00 pm? | YesNo -> No", "05:00 am"},
      {"Out", "05:00 am -> 5:00" + half + "5:00 pm? | YesNo -> Yes", "05:00 pm"},
  };
  for (const auto& [which, shown, time] : cases) {
    MenuItem& menu = which == "In" ? mnuDefaultClockIn : mnuDefaultClockOut;
    payroll.Choose(menu, "[input] Set Default Clock " + which + " Time | \\rDefault Clock " +
                             which + " Time? | " + shown);
    EXPECT_EQ(menu.Caption.Get(), "Default Clock " + which + "=" + time);
  }
  payroll.Choose(mnuAutosetTime);
  txtComments.Text = "Crew#3 north";
  payroll.Stop();
  EXPECT_EQ(payroll.Ini(),
            "[Ostrel Remote]\r\nRemote Files Floppy=" + payroll.Disk() +
                "\r\nUseTimeClock=True\r\nDefault Clock In=08:00 am\r\n"
                "Default Clock Out=05:00 pm\r\nAutosetTime=False\r\nComments=Crew#3 north\r\n");
}

TEST(Settings, SayThatTheClockIsOffWhereItWouldStand) {
  Payroll payroll;
  payroll.WriteIni("UseTimeClock=False\r\nAutosetTime=False\r\n");
  payroll.Start();
  for (MenuItem* step : {&mnuUseTimeClock, &mnuAutosetTime, &mnuAutosetTime, &mnuUseTimeClock}) {
    if (lblClockOff.Visible) {
      EXPECT_EQ(lblClockOff.Left + 30, CurTimeCtl1.Left) << step->Name;
    }
    payroll.Choose(*step);
  }
}

class Reporting : public testing::Test {
 protected:
  /// Reports a failure to an operator who sees and answers as told.
  ///   returns  what becomes of the statement
  std::string Outcome(std::int32_t number, const std::string& shown, std::int32_t line = 6520) {
    std::string message = "Duplicate value.", outcome;
    Office.Desktop.Expect(shown, [&] {
      try {
        std::int16_t answer = 7;
        DisplayErrMessage(number, message, line, "WriteValues", ScannerModule, answer);
        outcome = answer == -1 ? "again" : answer == 0 ? "over" : "unanswered";
      } catch (const ProgramEnded&) {
        outcome = "end";
      }
    });
    return outcome;
  }
  std::string Log() const { return Office.Folder.Read("app/Errors.Log"); }

  RunningPayroll Office;
  const std::string Title = "[!] PROGRAM or DATA ERROR: PHONE SUPPORT - NOW!! | ";
};

TEST_F(Reporting, SaysAndLogsWhatHappenedToTheBlank) {
  Office.Folder.Write(std::string("app/OstrelPayroll") + kExecutableExtension, "");
  const std::string app = Office.App(), cut = "\\r";
  const std::string where =
      "   Client# 1234  in " + app.substr(0, app.size() - 1) + "  on 11/18/2004 10:42:00 AM *Opr ";
  const std::string site = ") in Line# 6520 in routine 'WriteValues' in module 'Scanner'";
  const std::string version = "   (" + app + "OstrelPayroll" + kExecutableExtension +
                              " Tq4 version dated: */20*) | AbortRetryIgnore -> ";
  const std::string rights =
      "If you are trying to create a new company on a network drive, you must have 'SUPERVISOR' "
      "rights.";
  const std::string indexes = "Do Tools!Rebuild Indexes to correct the problem.";
  const std::string cases[][5] = {{"3022", "", "Retry", "again", "Retried Error"},
                                  {"75", rights, "Ignore", "over", "Ignored Error"},
                                  {"3274", indexes, "Abort", "end", "Aborted Job"}};
  std::string log;
  for (const auto& [number, hint, answer, outcome, noted] : cases) {
    const std::string message = "Duplicate value. (Err#" + number + site;
    EXPECT_EQ(Outcome(std::stoi(number),
                      Title + message + (hint.empty() ? "" : cut + hint) + version + answer),
              outcome);
    log += message + "\r\n" + (hint.empty() ? "" : "   " + hint + "\r\n") + where + noted + "\r\n";
    EXPECT_EQ(Log(), log);
  }
  EXPECT_EQ(Outcome(16, ""), "over");
  EXPECT_EQ(Log(), log);
  for (const char* name : {"HALVCONV", "halvane"}) {  // programs of the office's product
    SetExecutable(Office.App(), name);
    EXPECT_EQ(Outcome(3022, Title + "*   (Halvane Accounting Tq4 version dated: *) *-> Ignore"),
              "over");
  }
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
    int passes = 0;
    Office.Desktop.OnEventPass([&] { ++passes; });
    EXPECT_EQ(Outcome(number, ""), "again");  // first failure of the site
    EXPECT_EQ(passes, 1);
    Office.Desktop.PassSeconds(9);  // past midnight, where the clock starts again
    EXPECT_EQ(Outcome(number, ""), "again");
    Office.Desktop.PassSeconds(1);
    EXPECT_EQ(Outcome(number, conflict + "Retry"), "again");
    EXPECT_EQ(Outcome(number, conflict + "Ignore"), "over");  // and at once from now on
    EXPECT_EQ(Outcome(number, "", 6530), "again");  // another site, ten seconds of its own
    UserCount = 1;
    EXPECT_EQ(Outcome(number, Title + "*-> Ignore"), "over");
    Office.Desktop.OnEventPass({});
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
    Office.Desktop.Expect(report + "Retry\n" + report + "Ignore", [&, raise = fault] {
      statement(310, [&] {
        ++runs;
        raise();
      });
    });
    EXPECT_EQ(runs, 2);
    EXPECT_TRUE(testing::internal::GetCapturedStderr().ends_with("*Opr Ignored Error\r\n"));
  }
}

}  // namespace
}  // namespace ostrel
