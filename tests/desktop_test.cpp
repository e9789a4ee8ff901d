#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "platform/database/database.h"
#include "platform/database/store_fields.h"
#include "platform/desktop.h"
#include "platform/values/clock.h"
#include "support/scripted_desktop.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

TEST(ScriptedDesktop, AnswersInOrderAndKeepsWhatWasShown) {
  ScriptedDesktop desktop;
  desktop.RecordSignals();
  desktop.WillAnswer(BoxAnswer::No, [] { Beep(); });
  desktop.WillType("8:00\r");
  desktop.WillPick("/disk/Clnt1234.zip");
  desktop.WillAnswer(BoxAnswer::Ok);

  EXPECT_EQ(MsgBox("8:00\rpm?", BoxButtons::YesNo, BoxIcon::Question, "Time"), BoxAnswer::No);
  EXPECT_EQ(InputBox("\rTime?", "Set", "7:00"), "8:00\r");
  EXPECT_EQ(TheDesktop().ShowOpenFile({"Open", "a:\\", "Backup", "Clnt*.zip"}),
            "/disk/Clnt1234.zip");
  SetMousePointer(MousePointer::Wait);
  EXPECT_EQ(desktop.ShowMessageBox({.Text = "Done.", .Detail = "3 pages"}), BoxAnswer::Ok);
  EXPECT_EQ(desktop.TakeShown(),
            "beep\n"
            "[?] Time | 8:00\\rpm? | YesNo -> No\n"
            "[input] Set | \\rTime? | 7:00 -> 8:00\\r\n"
            "[open] Open | a:\\ | Backup (Clnt*.zip) -> /disk/Clnt1234.zip\n"
            "pointer 11\n"
            "[ ] Ostrel Payroll | Done. (3 pages) | Ok -> Ok");
  EXPECT_EQ(desktop.TakeShown(), "");
}

TEST(ScriptedDesktop, FailsTheTestOnWhatTheScriptDoesNotHave) {
  ScriptedDesktop desktop;
  BoxAnswer answer = BoxAnswer::Ok;
  EXPECT_NONFATAL_FAILURE(answer = MsgBox("?", BoxButtons::AbortRetryIgnore), "nobody expected");
  EXPECT_EQ(answer, BoxAnswer::Ignore);
  EXPECT_NONFATAL_FAILURE(MsgBox("?", BoxButtons::YesNoCancel), "nobody expected");
  desktop.WillAnswer(BoxAnswer::Yes);
  EXPECT_NONFATAL_FAILURE(InputBox("?", "", "offered"), "nobody expected");
  EXPECT_NONFATAL_FAILURE(MsgBox("?", BoxButtons::OkCancel), "Yes is no button");
  EXPECT_EQ(desktop.Shown().back(), "[ ] Ostrel Payroll | ? | OkCancel -> Cancel");
  EXPECT_NONFATAL_FAILURE(
      {
        ScriptedDesktop unread;
        unread.WillType("typed");
      },
      "nobody asked for: typed");
}

/// What another program would find in the store, or this one after a power cut.
int LinesInFile(const std::string& path) {
  sqlite3* file = nullptr;
  sqlite3_open_v2(path.c_str(), &file, SQLITE_OPEN_READONLY, nullptr);
  int lines = -1;
  const auto take = [](void* count, int, char** columns, char**) {
    *static_cast<int*>(count) = std::stoi(columns[0]);
    return 0;
  };
  sqlite3_exec(file, "SELECT count(*) FROM OstrelPr", take, &lines, nullptr);
  sqlite3_close(file);
  return lines;
}

TEST(Desktop, GatheredLinesAreInTheFileBeforeABoxIsUp) {
  ScriptedDesktop desktop;
  const TempFolder folder;
  const std::string path = folder.Path("Prin1234.mdb");
  const Database store = CreateDatabase(path, "");
  store.AppendTable(LineTable());
  Recordset lines = store.OpenRecordset("OstrelPr", RecordsetType::Dynaset);

  store.ShareCommits();
  for (int box = 0; box < 2; ++box) {
    lines.AddNew();
    lines["EMPL_NUMB"] = 101;
    lines.Update();
    EXPECT_EQ(LinesInFile(path), box);
    const auto meanwhile = [&] { EXPECT_EQ(LinesInFile(path), box + 1); };
    box == 0 ? desktop.WillAnswer(BoxAnswer::Ok, meanwhile) : desktop.WillType("", meanwhile);
    box == 0 ? static_cast<void>(MsgBox("Go on?")) : static_cast<void>(InputBox("?", "", ""));
  }
  store.CommitShared();
}

TEST(ScriptedDesktop, RunsPostedActionsAndTheClockWhenTold) {
  ScriptedDesktop desktop;
  std::string ran;
  desktop.Post([&] {
    ran += "a";
    desktop.Post([&] { ran += "c"; });
  });
  desktop.Post([&] { ran += "b"; });
  EXPECT_EQ(ran, "");
  desktop.RunPosted();
  EXPECT_EQ(ran, "abc");

  desktop.SetTime({38152.5});
  desktop.OnEventPass([&] { desktop.PassSeconds(21600); });
  DoEvents();
  EXPECT_EQ(Now(), Moment{38152.75});
}

}  // namespace
}  // namespace ostrel
