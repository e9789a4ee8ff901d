// Each command of the day on a disk that fills up, answers with errors, or is pulled out, at every
// moment. Afterwards the store is whole, files are the old or the new ones, the operator has been
// told, and trying again ends as if nothing had happened.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <memory>
#include <random>

#include "battery/battery.h"
#include "battery/disk_shim.h"
#include "battery/working_day.h"
#include "frame/app_state.h"
#include "platform/failure.h"

namespace ostrel {
namespace {

constexpr std::size_t kStart = 0, kImport = 4, kUpdate = 5;

class Harm : public DiskWatcher {
 public:
  using DiskWatcher::DiskWatcher;
  virtual void End() = 0;  ///< from here on the disk is well
  bool Struck = false;
};

/// A disk with so many bytes left.
class SmallDisk : public Harm {
 public:
  SmallDisk(const std::string& folder, std::int64_t room) : Harm(folder), room_(room) {}
  void End() override { room_ = std::numeric_limits<std::int64_t>::max() / 2; }

  int Before(DiskCall& call) override {
    if (call.What == DiskCallKind::Remove) room_ += call.Size;
    if (call.What == DiskCallKind::Cut) room_ += call.Size - call.At;
    if (call.What != DiskCallKind::Write) return 0;
    const auto count = static_cast<std::int64_t>(call.Bytes.size());
    const std::int64_t old = std::clamp<std::int64_t>(call.Size - call.At, 0, count);
    const std::int64_t fits = std::min(count, old + room_);
    if (fits < count) Struck = true;
    if (fits <= 0) return ENOSPC;
    room_ -= std::max<std::int64_t>(0, call.At + fits - call.Size);
    call.Bytes = call.Bytes.substr(0, static_cast<std::size_t>(fits));
    return 0;
  }

 private:
  std::int64_t room_;
};

/// From the n-th change on, as many calls fail as told.
class FailingDisk : public Harm {
 public:
  FailingDisk(const std::string& folder, std::int64_t n, int failures)
      : Harm(folder), to_come_(n), failures_(failures) {}
  void End() override { failures_ = 0; }

  int Before(DiskCall& call) override {
    if (call.What == DiskCallKind::Read || failures_ == 0 || --to_come_ > 0) return 0;
    Struck = true;
    --failures_;
    return EIO;
  }

 private:
  std::int64_t to_come_;
  int failures_;
};

/// The folder goes with the n-th call and comes back at the end.
class PulledStick : public Harm {
 public:
  PulledStick(const std::string& folder, std::int64_t n)
      : Harm(folder), folder_(folder), away_(folder + ".away"), to_come_(n) {}
  ~PulledStick() override { End(); }
  void End() override {
    std::error_code there;
    std::filesystem::rename(away_, folder_, there);
  }

  int Before(DiskCall& call) override {
    if (--to_come_ != 0) return 0;
    Struck = true;
    std::filesystem::rename(folder_, away_);
    BreakHandles();
    const bool byName = call.What == DiskCallKind::Open || call.What == DiskCallKind::Create ||
                        call.What == DiskCallKind::Rename;
    return byName ? ENOENT : EIO;
  }

 private:
  // What was open there answers with errors from now on, as address 0 of this process does.
  void BreakHandles() const;

  std::string folder_, away_;
  std::int64_t to_come_;
};

void PulledStick::BreakHandles() const {
  const int broken = ::open("/proc/self/mem", O_RDWR | O_CLOEXEC);
  for (const auto& handle : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code closed;
    const auto path = std::filesystem::read_symlink(handle.path(), closed).string();
    if (path.starts_with(away_)) dup2(broken, std::stoi(handle.path().filename().string()));
  }
  close(broken);
}

using HarmMaker = std::unique_ptr<Harm> (*)(const Payroll& laptop, std::int64_t amount);

/// All of a line but what the hours calculation sets.
std::string Entered(const std::string& line) {
  std::size_t end = line.size();
  for (int field = 0; field < 3; ++field) end = line.rfind(',', end - 1);
  return line.substr(0, end);
}

class DiskFaults : public testing::Test {
 protected:
  DiskFaults() : record(day) {
    for (std::size_t command = 0; command < kDay.size(); ++command) {
      Prepare(command);
      day.RunCommand(command);
      said.push_back(day.Hands.Said);
      clean.push_back({day.Lines(), day.Files()});
    }
  }

  struct Outcome {
    std::vector<std::string> Lines;
    Contents Files;
    bool operator==(const Outcome&) const = default;
  };

  /// The day up to a command.
  void Prepare(std::size_t command) {
    day.Hands.OnReport = {};
    day.Hands.OnDiskNotReady = {};
    day.Reset();
    for (std::size_t earlier = 0; earlier < command; ++earlier) day.RunCommand(earlier);
    day.Hands.Said.clear();
    before = command == kStart ? std::vector<std::string>{} : day.Lines();
  }

  /// Plays a command under harm.
  ///   answer   to each report; before Retry the disk is put right
  ///   returns  whether the harm came about
  bool Play(std::size_t command, HarmMaker harmed, std::int64_t amount, BoxAnswer answer) {
    SCOPED_TRACE(std::string(kDay[command].Name) + " " + std::to_string(amount));
    Prepare(command);
    std::unique_ptr<Harm> harm = harmed(day.Laptop, amount);
    const bool retries = answer == BoxAnswer::Retry;
    const auto healed = [&](BoxAnswer given) {
      if (retries) harm->End();
      return given;
    };
    day.Hands.OnReport = [&](const std::string&) { return healed(answer); };
    day.Hands.OnDiskNotReady = [&] {
      ++notReady;
      return healed(retries ? BoxAnswer::Ok : BoxAnswer::Cancel);
    };
    const bool ended = !Ran(command);
    const bool struck = harm->Struck;
    harm->End();
    harm.reset();
    if (!struck) return false;
    ++runs;
    reports += static_cast<int>(day.Hands.Reports.size());
    told = "Said: " + day.Hands.Said;
    for (const std::string& report : day.Hands.Reports) told += "\nReport: " + report;
    SCOPED_TRACE(told);
    if (retries) {
      ExpectDone(command, ended);
    } else {
      ExpectWhole(command);
    }
    return true;
  }

  bool Ran(std::size_t command) {
    try {
      day.RunCommand(command);
      return true;
    } catch (const ProgramEnded&) {
      return false;
    }
  }

  /// What had been entered stands, and nothing else has come in than what this command enters.
  void ExpectLines(std::size_t command) {
    std::vector<std::string> found = day.Lines();
    std::vector<std::string> entered = clean[command].Lines;
    ASSERT_GE(found.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i)
      EXPECT_EQ(Entered(found[i]), Entered(before[i]));
    for (auto* lines : {&found, &entered}) {
      for (std::string& line : *lines) line = Entered(line);
      std::sort(lines->begin(), lines->end());
    }
    EXPECT_TRUE(std::includes(entered.begin(), entered.end(), found.begin(), found.end()));
    EXPECT_EQ(day.Ask("PRAGMA integrity_check"), std::vector<std::string>{"ok,"});
  }

  /// The fault went unanswered: all is as it was or as it should be, and the next start is well.
  void ExpectWhole(std::size_t command) {
    const bool claimed =
        *kDay[command].Done != '\0' && day.Hands.Reports.empty() && day.Hands.Said == said[command];
    EXPECT_TRUE(!claimed || Now() == clean[command]);
    if (command != kStart) ExpectLines(command);
    if (told.find("CalcEmplHours") != std::string::npos) AcceptUnfinishedHours();
    EXPECT_EQ(record.FilesAfterRestart(day), "");
  }

  /// The operator went on without the hours: the file is whole, but need not have them.
  void AcceptUnfinishedHours() {
    const std::string& whole = clean[kImport].Files.at("disk/Pck-1234.asc");
    const std::string found = day.Laptop.Folder.Read("disk/Pck-1234.asc");
    if (found.starts_with(whole.substr(0, whole.find("140")))) {
      EXPECT_TRUE(found.ends_with("\"\r\n")) << found;
      day.Laptop.Folder.Write("disk/Pck-1234.asc", whole);
    }
  }

  /// The disk was put right when a report came: all is as without the fault, at the latest after the
  /// command, which was refused with a word, is given again.
  void ExpectDone(std::size_t command, bool ended) {
    if (command == kDay.size() - 1) return ExpectSettings();
    if (Now() == clean[command]) return;
    EXPECT_TRUE(ended || day.Hands.Said != said[command]) << "not done, and not a word";
    ExpectLines(command);
    const std::string fault = ended ? record.FilesAfterRestart(day) : "";
    EXPECT_EQ(fault, "");
    if (command == kStart && !ended) day.Laptop.Stop();
    EXPECT_TRUE(Ran(command));
    EXPECT_TRUE(Now() == clean[command]);
  }

  /// A setting that cannot be written stays as it was, without a word.
  void ExpectSettings() {
    ExpectLines(kDay.size() - 1);
    const std::string now = "\n" + day.Laptop.Ini();
    const std::string whole = "\n" + clean.back().Files.at("config/Halvane.ini");
    for (std::size_t at = 0; at + 1 < now.size(); at = now.find('\n', at + 1)) {
      const std::string line = now.substr(at, now.find('\n', at + 1) - at + 1);
      EXPECT_NE(whole.find(line), std::string::npos) << line;
    }
  }

  Outcome Now() const { return {day.Lines(), day.Files()}; }

  /// The control: an import file written straight into its place, under the same harm.
  ///   returns  of ten times, how often it is neither the old nor the new one afterwards
  int TornByAPlainWriter(HarmMaker harmed, std::int64_t step) {
    const std::string path = day.Laptop.Disk("Pck-1234.asc");
    const std::string content = clean[kImport].Files.at("disk/Pck-1234.asc");
    int torn = 0;
    for (int n = 1; n <= 10; ++n) {
      day.Reset();
      const std::string old = ReadWholeFile(path);
      {
        const std::unique_ptr<Harm> harm = harmed(day.Laptop, n * step);
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        const ssize_t written = write(file, content.data(), content.size());
        EXPECT_LE(written, static_cast<ssize_t>(content.size()));
        close(file);
      }
      const std::string found = ReadWholeFile(path);
      if (found != old && found != content) ++torn;
    }
    EXPECT_GT(torn, 0) << "a plain writer does as well";
    return torn;
  }

  void Print(const char* row, int control) const {
    Figure(row, std::to_string(runs) + " runs, " + std::to_string(reports) + " reports, " +
                    std::to_string(notReady) + " times disk not ready, seed " +
                    std::to_string(kSeed) + (HasFailure() ? ": FAILED" : ": nothing lost") +
                    "; control with a plain writer: " + std::to_string(control) + " of 10 torn");
  }

  WorkingDay day;
  DayRecord record;
  std::vector<std::string> said;
  std::string told;  ///< by the run played last
  std::vector<Outcome> clean;
  std::vector<std::string> before;
  int runs = 0, reports = 0, notReady = 0;
};

constexpr BoxAnswer kAnswers[] = {BoxAnswer::Retry, BoxAnswer::Ignore};

TEST_F(DiskFaults, AFullDiskIsReportedAndKeepsAllThatWasWritten) {
  const auto full = [](const Payroll& laptop, std::int64_t room) -> std::unique_ptr<Harm> {
    return std::make_unique<SmallDisk>(laptop.Folder.Path(), room);
  };
  std::mt19937 random(kSeed);
  const int wanted = Runs(500, 40);
  for (int tries = 0; runs < wanted && tries < 10 * wanted; ++tries) {
    const std::size_t command = random() % kDay.size();
    const auto room = static_cast<std::int64_t>(random() % (1U << random() % 17));
    if (!Play(command, full, room, kAnswers[random() % 2])) continue;
    const bool names = told.find("space") + 1 != 0 || told.find("full") + 1 != 0;
    EXPECT_TRUE(names || command == kDay.size() - 1) << kDay[command].Name << " " << room << told;
    if (HasFailure()) break;
  }
  EXPECT_GE(runs, wanted);
  Print("Full disk", TornByAPlainWriter(full, 20));
}

TEST_F(DiskFaults, EveryCallMayFail) {
  const auto once = [](const Payroll& laptop, std::int64_t n) -> std::unique_ptr<Harm> {
    return std::make_unique<FailingDisk>(laptop.Folder.Path(), n, 1);
  };
  const auto forGood = [](const Payroll& laptop, std::int64_t n) -> std::unique_ptr<Harm> {
    return std::make_unique<FailingDisk>(laptop.Folder.Path(), n, 1 << 30);
  };
  for (std::size_t command = 0; command < kDay.size(); ++command) {
    for (int n = 1; Play(command, once, n, BoxAnswer::Retry) && !HasFailure();) n += Runs(1, 7);
    for (int n = 1; Play(command, forGood, n, BoxAnswer::Retry) && !HasFailure();) n += Runs(1, 7);
    for (int n = 1; Play(command, forGood, n, BoxAnswer::Ignore) && !HasFailure();) n += Runs(1, 7);
  }
  Print("I/O errors", TornByAPlainWriter(once, 1));
}

TEST_F(DiskFaults, TheStickMayBePulledAtAnyMoment) {
  const auto pulled = [](const Payroll& laptop, std::int64_t n) -> std::unique_ptr<Harm> {
    return std::make_unique<PulledStick>(laptop.Folder.Path("disk"), n);
  };
  for (const std::size_t command : {kImport, kUpdate}) {
    for (const BoxAnswer answer : kAnswers) {
      for (int n = 1; Play(command, pulled, n, answer) && !HasFailure();) ++n;
    }
  }
  EXPECT_GT(notReady, 0);
  Print("Pulled stick", TornByAPlainWriter(pulled, 1));
}

}  // namespace
}  // namespace ostrel
