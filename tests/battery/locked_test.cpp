// The store in the hands of somebody else: another program that holds it, and two copies of this one
// at the same time.

#include <gtest/gtest.h>
#include <sched.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>

#include "battery/battery.h"
#include "battery/working_day.h"
#include "support/no_waiting.h"

namespace ostrel {
namespace {

constexpr const char* kStages[] = {"BEGIN; SELECT count(*) FROM OstrelPr", "BEGIN IMMEDIATE",
                                   "BEGIN EXCLUSIVE"};

/// What both copies know of each other.
struct Meeting {
  std::atomic<int> Ready, Waits, Saves[2];
};

Meeting* meeting = nullptr;
sqlite3_vfs* real = nullptr;

/// Has SQLite lock the system's files in one of its ways, and counts how often a copy waits for the
/// other.
void MeetBy(const char* locking) {
  static sqlite3_vfs counted;
  sqlite3_vfs_unregister(&counted);
  real = sqlite3_vfs_find(locking);
  counted = *real;
  counted.zName = "counted";
  counted.xSleep = [](sqlite3_vfs*, int time) {
    ++meeting->Waits;
    return real->xSleep(real, time);
  };
  sqlite3_vfs_register(&counted, 1);
  meeting = new (mmap(nullptr, sizeof(Meeting), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                      -1, 0)) Meeting{};
}

class Locked : public testing::Test {
 protected:
  void Start(int users) {
    day.Reset();
    day.Laptop.WriteIni("UserCount=" + std::to_string(users) + "\r\n");
    day.RunCommand(0);
  }

  static constexpr int kMeetings = 10;

  static int EmployeeOf(int copy, int save) { return 10'000 * (copy + 1) + save; }

  /// One of the two, in a process of its own: saves until they have met often enough.
  [[noreturn]] void Live(int copy) {
    day.Hands.OnEventPass([&] { day.Laptop.Desktop.PassSeconds(0.5); });
    day.Hands.OnReport = [](const std::string&) -> BoxAnswer {
      meeting->Ready = 2;
      _exit(1);
    };
    day.RunCommand(0);
    for (++meeting->Ready; meeting->Ready < 2;) sched_yield();
    const int least = Runs(300, 40);
    for (int i = 0; i < least || (i < 20 * least && meeting->Waits < kMeetings); ++i) {
      day.Laptop.Save(std::to_string(EmployeeOf(copy, i)));
      meeting->Saves[copy] = i + 1;
    }
    _exit(0);
  }

  /// Has two copies save at once and looks at what they leave behind.
  void SaveAtOnce(const char* locking) {
    MeetBy(locking);
    Start(2);
    day.Laptop.Stop();
    pid_t copies[2];
    for (int copy = 0; copy < 2; ++copy) {
      copies[copy] = fork();
      if (copies[copy] == 0) Live(copy);
    }
    boxes = 0;
    saved.clear();
    for (int copy = 0; copy < 2; ++copy) {
      int end = 0;
      waitpid(copies[copy], &end, 0);
      boxes += end == 0 ? 0 : 1;
      for (int i = 0; i < meeting->Saves[copy]; ++i) {
        saved += std::to_string(EmployeeOf(copy, i)) + "|";
      }
    }
    found = day.Ask("SELECT CAST(EMPL_NUMB AS INT) FROM OstrelPr ORDER BY 1") + "|" +
            day.Ask("PRAGMA integrity_check");
  }

  int boxes = 0;
  std::string saved, found;  // numbers of employees; behind those found, SQLite's finding
  WorkingDay day;
};

TEST_F(Locked, ASaveWaitsForAnotherUserAndAsksAfterTenSeconds) {
  const NoWaiting noWaiting;
  const struct {
    int Users;
    int HeldFor;  // seconds
    bool Asks;
  } cases[] = {{2, 9, false}, {2, 12, true}, {1, 9, true}};
  Row row("Locked", "boxes before ten seconds with a single user");
  for (const char* stage : kStages) {
    ++row["stages of locking"];
    for (const auto& c : cases) {
      SCOPED_TRACE(std::string(stage) + " " + std::to_string(c.Users));
      Start(c.Users);
      sqlite3* other = nullptr;
      sqlite3_open_v2(day.Laptop.App("Prin1234.mdb").c_str(), &other, SQLITE_OPEN_READWRITE,
                      nullptr);
      EXPECT_EQ(sqlite3_exec(other, stage, nullptr, nullptr, nullptr), SQLITE_OK);
      const auto letGo = [&] { sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr); };
      int seconds = 0;
      day.Hands.OnEventPass([&] {
        day.Laptop.Desktop.PassSeconds(1);
        if (++seconds == c.HeldFor) letGo();
      });
      day.Hands.OnReport = [&](const std::string&) {
        ++(c.Users == 1 ? row.Control : row["boxes after ten seconds"]);
        letGo();
        return BoxAnswer::Retry;
      };
      day.Laptop.Save("140");
      EXPECT_EQ(!day.Hands.Reports.empty(), c.Asks);
      EXPECT_EQ(day.Ask("SELECT EMPL_NUMB FROM OstrelPr"), "140.0");
      day.Kill();
      sqlite3_close(other);
    }
  }
}

TEST_F(Locked, TwoCopiesSaveAtOnce) {
  Row row("Two copies", "store damaged by two that take no notice of each other");
  SaveAtOnce("unix");
  EXPECT_EQ(boxes, 0) << day.Laptop.Folder.Read("app/Errors.Log");
  EXPECT_EQ(found, saved + "ok");
  row["saves"] = meeting->Saves[0] + meeting->Saves[1];
  row["waits for the other"] = meeting->Waits;
  EXPECT_GE(row["waits for the other"], kMeetings) << "they hardly met";
  SaveAtOnce("unix-none");
  if (found != saved + "ok") ++row.Control;
  MeetBy("unix");
}

}  // namespace
}  // namespace ostrel
