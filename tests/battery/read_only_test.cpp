// Folder, store, settings or log that may not be written: a clear report, and everything can still be
// looked at.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "battery/battery.h"
#include "scan_main/scan_main.h"
#include "support/agreeing_desktop.h"
#include "support/ask_sqlite.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

/// Runs something in a process of its own, as a user who may write only what all may.
///   returns  whether all that it expected came true
bool AsNobody(const std::function<void()>& run) {
  const pid_t child = fork();
  if (child == 0) {
    EXPECT_TRUE(geteuid() != 0 || (setresgid(kNobody, kNobody, kNobody) == 0 &&
                                   setresuid(kNobody, kNobody, kNobody) == 0));
    run();
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return status == 0;
}

/// "lines seen / reports at the start, of a view, of a save, of a wrong view, at the end: the first
/// number".
std::string UseTheProgram(Payroll& payroll) {
  AgreeingDesktop desktop(payroll.Desktop, BoxAnswer::Ignore);
  std::string said;
  const auto step = [&](const std::function<void()>& action) {
    desktop.Reports.clear();
    action();
    said += " " + std::to_string(desktop.Reports.size());
    if (desktop.Reports.empty()) return;
    const std::string& first = desktop.Reports.front();
    said += first.substr(first.find("(Err#"), 10);
  };
  testing::internal::CaptureStderr();  // where a report goes that no log takes
  step([&] { payroll.Start(); });
  said = payroll.Fields("EMPL_NUMB") + said;
  step([&] {
    payroll.Choose(mnuEmplOrder);
    payroll.Choose(mnuDisplayAllDates);
  });
  step([&] { payroll.Save("130"); });
  txtInput[kEmplBox].Text = "1 or";
  step([&] { payroll.Choose(mnuDisplayCurrentEmpl); });
  step([&] { payroll.Stop(); });
  testing::internal::GetCapturedStderr();
  return said;
}

TEST(ReadOnly, IsReportedOnceAndLeavesTheProgramUsable) {
  const char* const taken = "130|101 0 0 0 1(Err#3075) 0";
  const char* const refused = "130|101 0 0 1(Err#3027) 1(Err#3075) 0";
  const struct {
    std::string What;
    const char* Said;
    const char* Lines;
  } cases[] = {{"", taken, "3"},  // the control
               {"app/Prin1234.mdb", refused, "2"},
               {"app", refused, "2"},
               {"config/Halvane.ini", taken, "3"},
               {"config", taken, "3"},
               {"app/Errors.Log", taken, "3"}};
  Row row("Read-only", "line saved where nothing is protected");
  for (const auto& [what, said, lines] : cases) {
    SCOPED_TRACE(what);
    Payroll payroll;
    payroll.Folder.Write("app/Errors.Log", "");
    payroll.Start();
    payroll.AddLine("130 I 7:00 am|101 I 7:00 am");
    payroll.Stop();
    fs::remove(payroll.App("Prin1234.mdb-journal"));  // as beside a store that was copied
    for (const auto& entry : fs::recursive_directory_iterator(payroll.Folder.Path())) {
      fs::permissions(entry, fs::perms::all);
    }
    const std::string ini = payroll.Ini();
    const fs::path path = payroll.Folder.Path(what);
    if (!what.empty()) fs::permissions(path, fs::perms(0555));
    EXPECT_TRUE(AsNobody([&, heard = said] { EXPECT_EQ(UseTheProgram(payroll), heard); }));
    fs::permissions(path, fs::perms::all);
    const std::string store = payroll.App("Prin1234.mdb");
    const std::string count = AskSqlite(store, "SELECT count(*) FROM OstrelPr");
    EXPECT_EQ(count, lines);
    if (!what.empty()) ++row["things write-protected in turn"];
    if (what.empty() && count == "3") ++row.Control;
    EXPECT_EQ(AskSqlite(store, "PRAGMA integrity_check"), "ok");
    EXPECT_EQ(payroll.Ini() == ini, what.starts_with("config")) << payroll.Ini();
  }
}

}  // namespace
}  // namespace ostrel
