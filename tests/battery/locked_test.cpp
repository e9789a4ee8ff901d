// The store in the hands of somebody else: another program that holds it, and two copies of this one
// at the same time.

#include <gtest/gtest.h>
#include <sched.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <map>
#include <sstream>

#include "battery/battery.h"
#include "battery/working_day.h"
#include "support/fault_vfs.h"

namespace ostrel {
namespace {

constexpr const char* kStages[] = {"BEGIN; SELECT count(*) FROM OstrelPr", "BEGIN IMMEDIATE",
                                   "BEGIN EXCLUSIVE"};

/// What both copies know of each other.
struct Meeting {
  std::atomic<int> Ready, Waits, Saves[2];
};

/// The system's files by one of SQLite's ways of locking them; counts how often a copy waits for the
/// other.
class WaitCounter {
 public:
  explicit WaitCounter(const char* locking) : vfs_(*sqlite3_vfs_find(locking)) {
    real_ = sqlite3_vfs_find(locking);
    meeting_ = static_cast<Meeting*>(
        mmap(nullptr, sizeof(Meeting), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    vfs_.zName = "counted";
    vfs_.xSleep = [](sqlite3_vfs*, int time) {
      ++meeting_->Waits;
      return real_->xSleep(real_, time);
    };
    sqlite3_vfs_register(&vfs_, 1);
  }
  ~WaitCounter() {
    sqlite3_vfs_unregister(&vfs_);
    munmap(meeting_, sizeof(Meeting));
  }
  WaitCounter(const WaitCounter&) = delete;
  WaitCounter& operator=(const WaitCounter&) = delete;

  Meeting* operator->() const { return meeting_; }

 private:
  static inline sqlite3_vfs* real_;
  static inline Meeting* meeting_;
  sqlite3_vfs vfs_;
};

class Locked : public testing::Test {
 protected:
  void Start(int users) {
    day.Reset();
    day.Laptop.WriteIni("UserCount=" + std::to_string(users) + "\r\n");
    day.RunCommand(0);
  }

  static constexpr int kMeetings = 10;

  /// One of the two, in a process of its own: saves until they have met often enough.
  [[noreturn]] void Live(int copy, const WaitCounter& meeting) {
    day.Hands.OnEventPass([&] { day.Laptop.Desktop.PassSeconds(0.5); });
    day.Hands.OnReport = [](const std::string&) -> BoxAnswer { _exit(1); };
    day.RunCommand(0);
    for (++meeting->Ready; meeting->Ready < 2;) sched_yield();
    const int least = Runs(300, 40);
    for (int i = 0; i < least || (i < 20 * least && meeting->Waits < kMeetings); ++i) {
      day.Laptop.Save(std::to_string(10'000 * (copy + 1) + i));
      meeting->Saves[copy] = i + 1;
    }
    _exit(0);
  }

  /// Has two copies save at once.
  ///   returns  what is wrong afterwards; "" nothing
  std::string Damage(const WaitCounter& meeting) {
    Start(2);
    day.Laptop.Stop();
    pid_t copies[2];
    for (int copy = 0; copy < 2; ++copy) {
      copies[copy] = fork();
      if (copies[copy] == 0) Live(copy, meeting);
    }
    std::string damage;
    for (const pid_t copy : copies) {
      int end = 0;
      waitpid(copy, &end, 0);
      if (end != 0) damage += "a box was shown: " + day.Laptop.Folder.Read("app/Errors.Log");
    }
    std::map<std::string, int> lines;
    std::istringstream all(day.Ask("SELECT CAST(EMPL_NUMB AS INT) FROM OstrelPr"));
    for (std::string line; std::getline(all, line, '|');) ++lines[line];
    for (int copy = 0; copy < 2; ++copy) {
      for (int i = 0; i < meeting->Saves[copy]; ++i) {
        const std::string line = std::to_string(10'000 * (copy + 1) + i);
        if (lines[line] != 1) damage += line + " " + std::to_string(lines[line]) + " times;";
      }
    }
    const std::string finding = day.Ask("PRAGMA integrity_check");
    return finding == "ok" ? damage : damage + finding;
  }

  WorkingDay day;
};

TEST_F(Locked, ASaveWaitsForAnotherUserAndAsksAfterTenSeconds) {
  const FaultVfs noWaiting;
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
  {
    const WaitCounter meeting("unix");
    EXPECT_EQ(Damage(meeting), "");
    row["saves"] = meeting->Saves[0] + meeting->Saves[1];
    row["waits for the other"] = meeting->Waits;
  }
  EXPECT_GE(row["waits for the other"], kMeetings) << "they hardly met";
  const WaitCounter unlocked("unix-none");
  if (!Damage(unlocked).empty()) ++row.Control;
}

}  // namespace
}  // namespace ostrel
