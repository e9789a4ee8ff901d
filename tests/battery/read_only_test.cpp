// Folder, store, settings or log that may not be written: a clear report, and everything can still be
// looked at.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "battery/battery.h"
#include "battery/harm.h"
#include "entry/scan_main.h"
#include "support/agreeing_desktop.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

/// What `run` says in a process of its own, as a user who may write only what all may.
std::string AsNobody(const std::function<std::string()>& run) {
  int ends[2] = {};
  EXPECT_EQ(pipe(ends), 0);
  const bool failed = testing::Test::HasFailure();
  const pid_t child = fork();
  if (child == 0) {
    const bool dropped = geteuid() != 0 || (setresgid(kNobody, kNobody, kNobody) == 0 &&
                                            setresuid(kNobody, kNobody, kNobody) == 0);
    const std::string said = dropped ? run() : "still root";
    const bool whole =
        write(ends[1], said.data(), said.size()) == static_cast<ssize_t>(said.size());
    _exit(whole && testing::Test::HasFailure() == failed ? 0 : 1);
  }
  close(ends[1]);
  std::string said;
  char block[4096];
  for (ssize_t count = 0; (count = read(ends[0], block, sizeof block)) > 0;) {
    said.append(block, static_cast<std::size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return status == 0 ? said : said + " (failed)";
}

void Permit(const fs::path& path, bool writable) {
  const fs::perms folder = writable ? fs::perms(0777) : fs::perms(0555);
  const fs::perms file = writable ? fs::perms(0666) : fs::perms(0444);
  fs::permissions(path, fs::is_directory(path) ? folder : file);
}

/// "lines seen / reports at the start, of a save, of a wrong view, at the end: the first number".
std::string UseTheProgram(Payroll& payroll) {
  AgreeingDesktop desktop(payroll.Desktop, BoxAnswer::Ignore);
  std::string said;
  const auto step = [&](const std::function<void()>& action) {
    desktop.Reports.clear();
    action();
    said += " " + std::to_string(desktop.Reports.size());
    if (desktop.Reports.empty()) return;
    const std::size_t number = desktop.Reports.front().find("(Err#");
    said += desktop.Reports.front().substr(number,
                                           desktop.Reports.front().find(')', number) - number + 1);
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
  const struct {
    const char* What;
    const char* Said;
    const char* Lines;
  } cases[] = {
      {nullptr, "130|101 0 0 0 1(Err#3075) 0",
       "3"},  // control: nothing protected, the line is saved
      {"app/Prin1234.mdb", "130|101 0 0 1(Err#3027) 1(Err#3075) 0", "2"},
      {"app", "130|101 0 0 1(Err#3027) 1(Err#3075) 0", "2"},
      {"config/Halvane.ini", "130|101 0 0 0 1(Err#3075) 0", "3"},
      {"config", "130|101 0 0 0 1(Err#3075) 0", "3"},
      {"app/Errors.Log", "130|101 0 0 0 1(Err#3075) 0", "3"},
  };
  for (const auto& test : cases) {
    const std::string what = test.What == nullptr ? "nothing" : test.What;
    SCOPED_TRACE(what);
    Payroll payroll;
    payroll.Folder.Write("app/Errors.Log", "");
    payroll.Start();
    for (const char* line : {"130 I 7:00 am", "101 I 7:00 am"}) payroll.AddLine(line);
    payroll.Stop();
    fs::remove(payroll.App("Prin1234.mdb-journal"));  // as beside a store that was copied
    for (const auto& entry : fs::recursive_directory_iterator(payroll.Folder.Path())) {
      Permit(entry.path(), true);
    }
    const std::string ini = payroll.Ini();
    if (test.What != nullptr) Permit(payroll.Folder.Path(what), false);
    EXPECT_EQ(AsNobody([&] { return UseTheProgram(payroll); }), test.Said);
    if (test.What != nullptr) Permit(payroll.Folder.Path(what), true);
    EXPECT_EQ(AskSqlite(payroll.App("Prin1234.mdb"), "SELECT count(*) FROM OstrelPr"), test.Lines);
    EXPECT_EQ(AskSqlite(payroll.App("Prin1234.mdb"), "PRAGMA integrity_check"), "ok");
    EXPECT_EQ(payroll.Ini() == ini, what.starts_with("config")) << payroll.Ini();
  }
  Figure("Read-only",
         std::to_string(std::size(cases) - 1) +
             " things write-protected in turn; control: unprotected, the line is saved");
}

}  // namespace
}  // namespace ostrel
