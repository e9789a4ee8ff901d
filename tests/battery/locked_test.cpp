// The store in the hands of somebody else: another program that holds it, and two copies of this one
// at the same time.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <map>

#include "battery/battery.h"
#include "battery/working_day.h"
#include "frame/app_state.h"
#include "support/fault_vfs.h"

namespace ostrel {
namespace {

/// Another program with the store open, in one of SQLite's stages of locking.
class Holder {
 public:
  Holder(const std::string& path, const char* stage) {
    sqlite3_open_v2(path.c_str(), &store_, SQLITE_OPEN_READWRITE, nullptr);
    EXPECT_EQ(sqlite3_exec(store_, stage, nullptr, nullptr, nullptr), SQLITE_OK);
  }
  ~Holder() { sqlite3_close(store_); }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

  void LetGo() { sqlite3_exec(store_, "ROLLBACK", nullptr, nullptr, nullptr); }

 private:
  sqlite3* store_ = nullptr;
};

constexpr const char* kStages[] = {"BEGIN; SELECT count(*) FROM OstrelPr", "BEGIN IMMEDIATE",
                                   "BEGIN EXCLUSIVE"};

class Locked : public testing::Test {
 protected:
  void Start(int users) {
    day.Reset();
    day.Laptop.WriteIni("UserCount=" + std::to_string(users) + "\r\n");
    day.RunCommand(0);
  }
  WorkingDay day;
};

TEST_F(Locked, ASaveWaitsForAnotherUserAndAsksAfterTenSeconds) {
  const FaultVfs noWaiting;
  const struct {
    int Users;
    int HeldFor;  // seconds
    bool Asks;
  } cases[] = {{2, 9, false}, {2, 12, true}, {1, 12, true}};
  int boxes = 0;
  for (const char* stage : kStages) {
    for (const auto& c : cases) {
      SCOPED_TRACE(std::string(stage) + " " + std::to_string(c.Users));
      Start(c.Users);
      Holder holder(day.Laptop.App("Prin1234.mdb"), stage);
      int seconds = 0;
      day.Hands.OnEventPass([&] {
        day.Laptop.Desktop.PassSeconds(1);
        if (++seconds == c.HeldFor) holder.LetGo();
      });
      day.Hands.OnReport = [&](const std::string&) {
        ++boxes;
        holder.LetGo();
        return BoxAnswer::Retry;
      };
      day.Laptop.Save("140");
      EXPECT_EQ(!day.Hands.Reports.empty(), c.Asks);
      EXPECT_EQ(day.Lines().size(), 1U);
      day.Kill();
    }
  }
  Figure("Locked", std::to_string(std::size(kStages)) + " stages of locking: no line lost; " +
                       std::to_string(boxes) + " boxes, none within ten seconds");
}

TEST_F(Locked, TwoCopiesSaveAtOnce) {
  const int saves = Runs(300, 40);
  Start(2);
  day.Laptop.Stop();
  const auto live = [&](int first) {
    day.Hands.OnEventPass([&] { day.Laptop.Desktop.PassSeconds(0.5); });
    day.Hands.OnReport = [](const std::string& text) {
      std::cerr << text << "\n";
      _exit(1);
      return BoxAnswer::Abort;
    };
    day.RunCommand(0);
    for (int i = 0; i < saves; ++i) day.Laptop.Save(std::to_string(first + i));
    _exit(0);
  };
  pid_t copies[2];
  for (int copy = 0; copy < 2; ++copy) {
    copies[copy] = fork();
    if (copies[copy] == 0) live(1000 * (copy + 1));
  }
  for (const pid_t copy : copies) {
    int end = 0;
    waitpid(copy, &end, 0);
    EXPECT_TRUE(WIFEXITED(end) && WEXITSTATUS(end) == 0) << "a box was shown";
  }
  std::map<int, int> times;
  for (const std::string& line : day.Lines()) ++times[std::stoi(line)];
  EXPECT_EQ(times.size(), 2U * static_cast<unsigned>(saves));
  for (const auto& [employee, count] : times) EXPECT_EQ(count, 1) << employee;
  EXPECT_EQ(day.Ask("PRAGMA integrity_check"), std::vector<std::string>{"ok,"});
  Figure("Two copies", std::to_string(saves) + " saves each at once: every line once, no box");
}

}  // namespace
}  // namespace ostrel
