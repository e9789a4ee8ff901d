// The client's store between this program and others at the same file: what a command leaves behind
// when its commit fails, a line that somebody else has deleted, a store that is locked at the start.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/database/sqlite_connection.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "support/agreeing_desktop.h"
#include "support/ask_sqlite.h"
#include "support/failing_statement.h"
#include "support/no_waiting.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

/// The laptop whose operator ignores every report.
class StoreOfAClient : public testing::Test {
 protected:
  void StartWith(const std::string& lines) {
    payroll.Start();
    payroll.AddLine(lines);
    Option1[kClockIn].Value = true;
    txtInput[kQuantityBox].Text = "0";
  }
  std::string Path() const { return payroll.App("Prin1234.mdb"); }
  std::string Ask(const std::string& sql) const { return AskSqlite(Path(), sql); }
  std::string Count() const { return Ask("SELECT count(*) FROM OstrelPr"); }

  const NoWaiting noWaiting;
  Payroll payroll;
  AgreeingDesktop desktop{payroll.Desktop, BoxAnswer::Ignore};
};

constexpr const char* kCrewOfTwo = "130 I 7:00 am|101 I 7:00 am|130 P 8:00 am 10 .5";

TEST_F(StoreOfAClient, KeepsNothingBackWhenACommitMetAnotherProgram) {
  const struct {
    MenuItem* Command;
    const char* LinesInTheEnd;  // with one that is saved behind the command
  } cases[] = {{&mnuMinWageWatch, "4"},
               {&mnuWriteImportFile, "4"},
               {&mnuClockoutAllEmpls, "6"},
               {&mnuReClockInAllEmpls, "6"},
               {&mnuClockInACrew, "7"}};
  desktop.Typed = "2";
  for (const auto& each : cases) {
    StartWith(kCrewOfTwo);
    SCOPED_TRACE(each.Command->Name);
    desktop.Reports.clear();
    SqliteConnection other(Path());
    other.Run("BEGIN", StoreStep::Read);
    other.Run("SELECT count(*) FROM OstrelPr", StoreStep::Read);
    payroll.Choose(*each.Command);
    EXPECT_EQ(desktop.Reports.size(), 1U);
    EXPECT_EQ(Count(), "3") << "nobody else can read";
    other.Run("COMMIT", StoreStep::Read);
    payroll.Save("140");
    EXPECT_EQ(Count(), each.LinesInTheEnd);
    EXPECT_EQ(lblLineCt.Caption.Get(), std::string(each.LinesInTheEnd) + " lines");
    EXPECT_EQ(Ask("SELECT count(*) FROM OstrelPr WHERE HOURS > 0") != "0",
              each.Command == &mnuMinWageWatch || each.Command == &mnuWriteImportFile);
    payroll.Stop();
    std::filesystem::remove(Path());
  }
}

TEST_F(StoreOfAClient, TakesWhatItWritesLateForItsOwn) {
  StartWith(kCrewOfTwo);
  const auto paint = [] {  // as a window does
    for (std::size_t row = 0; row < 3; ++row) Data1.Recordset.RowAt(row);
  };
  paint();
  SqliteConnection other(Path());
  other.Run("BEGIN", StoreStep::Read);
  other.Run("SELECT count(*) FROM OstrelPr", StoreStep::Read);
  payroll.Choose(mnuMinWageWatch);
  paint();
  other.Run("COMMIT", StoreStep::Read);
  ASSERT_EQ(desktop.Reports.size(), 1U);
  TDBGrid1.ToggleSelected(2);
  payroll.Choose(mnuDeleteLine);  // of a line with hours that come to the disk only now
  EXPECT_EQ(desktop.Reports.size(), 1U) << desktop.Reports.back();
  EXPECT_EQ(Ask("SELECT count(*), sum(HOURS) > 0 FROM OstrelPr"), "2,1");
}

TEST_F(StoreOfAClient, WritesAtTheEndWhatCouldNotBeWritten) {
  for (const bool stillLocked : {false, true}) {
    StartWith(kCrewOfTwo);
    SqliteConnection other(Path());
    other.Run("BEGIN", StoreStep::Read);
    other.Run("SELECT count(*) FROM OstrelPr", StoreStep::Read);
    payroll.Choose(mnuClockoutAllEmpls);
    if (!stillLocked) other.Run("COMMIT", StoreStep::Read);
    desktop.Reports.clear();
    payroll.Stop();
    ASSERT_EQ(desktop.Reports.size(), stillLocked ? 1U : 0U);
    EXPECT_TRUE(!stillLocked ||
                desktop.Reports[0].starts_with("2 lines are not on the disk yet. "));
    EXPECT_EQ(Count(), stillLocked ? "3" : "5");
    std::filesystem::remove(Path());
  }
}

TEST_F(StoreOfAClient, ThatIsLockedAtTheStartIsOpenedByTheNextCommand) {
  StartWith(kCrewOfTwo);
  payroll.Stop();
  SqliteConnection other(Path());
  other.Run("BEGIN EXCLUSIVE", StoreStep::Read);
  payroll.Start();
  EXPECT_EQ(desktop.Reports.size(), 2U);  // the store, and the view over it
  other.Run("COMMIT", StoreStep::Read);
  desktop.Reports.clear();
  Option1[kClockIn].Value = true;
  payroll.Save("140");
  payroll.Choose(mnuMinWageWatch);
  EXPECT_TRUE(desktop.Reports.empty()) << desktop.Reports[0];
  EXPECT_EQ(Count(), "4");
  EXPECT_EQ(lblLineCt.Caption.Get(), "4 lines");
}

TEST_F(StoreOfAClient, IsNotWalkedOverRowsThatWereBoundBefore) {
  const struct {
    std::int32_t Statement;
    MenuItem* Command;
  } cases[] = {{4190, &mnuMinWageWatch}, {3290, &mnuReClockInAllEmpls}, {5840, &mnuEmplDailyRpt}};
  payroll.SetClock("11/17/04 10:00 am");
  StartWith("130 I 7:00 am|130 P 8:00 am 10 .5");
  payroll.Stop();
  payroll.SetClock("11/18/04 10:00 am");
  StartWith("130 I 7:00 am|101 I 7:00 am");
  const std::string before = Ask("SELECT * FROM OstrelPr");
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Statement);
    const FailingStatement fails(each.Statement);
    payroll.Choose(*each.Command);
    EXPECT_EQ(Ask("SELECT * FROM OstrelPr"), before);
  }
  EXPECT_TRUE(desktop.Paper().Documents.empty()) << "everybody's lines on one employee's sheet";
  payroll.Save("140");
  EXPECT_EQ(Count(), "5");
}

TEST_F(StoreOfAClient, ListsWhatStandsInAField) {
  StartWith(kCrewOfTwo);
  const struct {
    const char* Change;
    const char* List;
    std::int32_t Count;
  } cases[] = {{"SELECT 1", "in (I,P)", 2},
               {"UPDATE OstrelPr SET EVENT_TYPE = '' WHERE rowid = 3", "in (I)", 2},
               {"UPDATE OstrelPr SET EVENT_TYPE = NULL WHERE rowid = 2", "in (I)", 3},
               {"DELETE FROM OstrelPr", "", 0}};
  for (const auto& each : cases) {
    Ask(each.Change);
    std::string notList;
    std::int32_t count = -1;
    EXPECT_EQ(DomainList("Prin App", "EVENT_TYPE", "", notList, count), each.List);
    EXPECT_EQ(count, each.Count);
    EXPECT_EQ(notList, count == 0 ? "" : " Not " + std::string(each.List));
  }
}

}  // namespace
}  // namespace ostrel
