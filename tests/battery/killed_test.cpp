// A day in a process of its own that is killed: by a timer at any moment, in the midst of a call that
// changes a file, with the call done in part, or at once when the operator may believe something to
// be written. With the power on, only what the program itself still holds back can be lost.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <ctime>

#include "battery/battery.h"
#include "battery/disk_shim.h"
#include "battery/working_day.h"
#include "frame/app_state.h"

namespace ostrel {
namespace {

void KillAfter(std::chrono::nanoseconds time) {
  sigevent kill{};
  kill.sigev_notify = SIGEV_SIGNAL;
  kill.sigev_signo = SIGKILL;
  timer_t timer{};
  timer_create(CLOCK_MONOTONIC, &kill, &timer);
  itimerspec when{};
  when.it_value.tv_sec = time / std::chrono::seconds(1);
  when.it_value.tv_nsec = 1 + time.count() % 1'000'000'000;
  timer_settime(timer, 0, &when, nullptr);
}

class Killed : public testing::Test {
 protected:
  Killed() : record(day) {
    day.Reset();
    DiskWatcher counter(day.Laptop.Folder.Path());
    counter.Before = [&](const DiskCall& call) {
      if (Changes(call)) ++changes;
      return 0;
    };
    const auto from = std::chrono::steady_clock::now();
    day.Run();
    length = std::chrono::steady_clock::now() - from;
  }

  enum class Moment { Any, InACall, Acknowledged };

  static bool Changes(const DiskCall& call) {
    return call.What != DiskOp::Read && call.What != DiskOp::Open;
  }

  [[noreturn]] void Live(int pipe, Moment moment, unsigned luck, bool holdsBack) {
    unsigned toCome = 1 + luck % changes, savesLeft = 3 + luck % 3;
    DiskWatcher killer(day.Laptop.Folder.Path());
    killer.Before = [&](DiskCall& call) {  // before the call, or when some of its bytes are written
      if (moment != Moment::InACall || !Changes(call) || --toCome > 0) return 0;
      const unsigned part = luck >> 16;
      if (call.Bytes.size() < 2 || part % 4 == 0) std::raise(SIGKILL);
      call.Bytes = call.Bytes.substr(0, 1 + part % (call.Bytes.size() - 1));
      killer.After = [](const DiskCall&) { std::raise(SIGKILL); };
      return 0;
    };
    if (moment == Moment::Any) KillAfter(length * (luck % 1000) / 1000);
    day.Run([&] {
      if (write(pipe, ".", 1) != 1) _exit(1);
      if (moment == Moment::Acknowledged && --savesLeft == 0) std::raise(SIGKILL);
      if (holdsBack) new Gathering(PrinDb);  // never ended
    });
    _exit(0);
  }

  /// Plays the day in a child until it is killed.
  ///   returns  the acknowledgements that came through the pipe
  std::size_t Play(Moment moment, unsigned luck, bool holdsBack) {
    int pipe[2];
    EXPECT_EQ(::pipe(pipe), 0);
    day.Reset();
    const pid_t child = fork();
    if (child == 0) Live(pipe[1], moment, luck, holdsBack);
    close(pipe[1]);
    std::size_t acknowledged = 0;
    for (char sign = 0; read(pipe[0], &sign, 1) == 1;) ++acknowledged;
    close(pipe[0]);
    int end = 0;
    waitpid(child, &end, 0);
    EXPECT_TRUE(WIFSIGNALED(end) ? WTERMSIG(end) == SIGKILL : end == 0) << end;
    if (!holdsBack) ++row["runs"];
    if (!holdsBack && WIFSIGNALED(end)) ++row["killed before the day's end"];
    return acknowledged;
  }

  WorkingDay day;
  DayRecord record;
  std::chrono::nanoseconds length{};
  unsigned changes = 0;
  Row row{"Killed", "times lines that were held back are lost"};
};

TEST_F(Killed, LosesNothingThatWasAcknowledged) {
  const int runs = Runs(2000, 40);
  for (const bool holdsBack : {false, true}) {
    Harm random;
    for (int run = 0; run < (holdsBack ? runs / 10 : runs); ++run) {
      const auto moment = holdsBack ? Moment::Acknowledged : static_cast<Moment>(run % 3);
      const auto luck = static_cast<unsigned>(random.Below(std::size_t{1} << 32));
      const std::size_t acknowledged = Play(moment, luck, holdsBack);
      day.Kill();
      const std::string damage = record.DamageAfter(day, acknowledged);
      EXPECT_TRUE(holdsBack || damage.empty()) << run << ", " << acknowledged << ": " << damage;
      if (holdsBack && !damage.empty()) ++row.Control;
    }
  }
  EXPECT_GT(row["killed before the day's end"], runs / 2);
}

}  // namespace
}  // namespace ostrel
