// Each command of the day on a disk that fills up, answers with errors, or is pulled out, at every
// moment. Afterwards the store is whole, files are the old or the new ones, the operator has been
// told, and trying again ends as if nothing had happened.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <sstream>

#include "battery/battery.h"
#include "battery/disk_shim.h"
#include "battery/working_day.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kStart = 0, kImport = 4, kUpdate = 5, kStop = 6;
constexpr const char* kImportFile = "disk/Pck-1234.asc";

enum class Fault { Full, Once, ForGood, Pulled };

/// A disk that has so many bytes left, answers its n-th call or all calls from there on with an error,
/// or goes away with it and comes back at the end.
class FaultyDisk : public DiskWatcher {
 public:
  FaultyDisk(const Payroll& laptop, Fault fault, std::int64_t amount)
      : DiskWatcher(laptop.Folder.Path() + (fault == Fault::Pulled ? "/disk" : "")),
        fault_(fault),
        left_(amount) {
    Before = [this](DiskCall& call) { return Strike(call); };
  }
  ~FaultyDisk() { End(); }
  void End() {  // from here on the disk is well
    well_ = true;
    std::error_code there;
    fs::rename(away_, Folder, there);
  }

  bool Struck = false;

 private:
  int Strike(DiskCall& call) {
    if (well_) return 0;
    if (fault_ == Fault::Full) return Fit(call);
    if (call.What == DiskOp::Read && fault_ != Fault::Pulled) return 0;
    --left_;
    if (left_ > 0 || (left_ < 0 && fault_ != Fault::ForGood)) return 0;
    Struck = true;
    return fault_ == Fault::Pulled ? Pull(call.What) : EIO;
  }

  int Fit(DiskCall& call) {
    if (call.What == DiskOp::Remove) left_ += call.Size;
    if (call.What == DiskOp::Cut) left_ += call.Size - call.At;
    if (call.What != DiskOp::Write) return 0;
    const std::int64_t count = std::ssize(call.Bytes);
    const std::int64_t old = std::clamp<std::int64_t>(call.Size - call.At, 0, count);
    const std::int64_t fits = std::min(count, old + left_);
    if (fits < count) Struck = true;
    if (fits <= 0) return ENOSPC;
    left_ -= std::max<std::int64_t>(0, call.At + fits - call.Size);
    call.Bytes = call.Bytes.substr(0, static_cast<std::size_t>(fits));
    return 0;
  }

  // What was open there answers with errors from now on, as address 0 of this process does.
  int Pull(DiskOp what) const {
    fs::rename(Folder, away_);
    const int broken = open("/proc/self/mem", O_RDWR | O_CLOEXEC);
    for (const auto& handle : fs::directory_iterator("/proc/self/fd")) {
      std::error_code closed;
      const std::string path = fs::read_symlink(handle, closed);
      if (path.starts_with(away_)) dup2(broken, std::stoi(handle.path().filename()));
    }
    close(broken);
    const bool byName = what == DiskOp::Open || what == DiskOp::Create || what == DiskOp::Rename;
    return byName ? ENOENT : EIO;
  }

  const std::string away_ = Folder + ".away";
  Fault fault_;
  std::int64_t left_;
  bool well_ = false;
};

class DiskFaults : public testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  DiskFaults() : record(day) {
    for (std::size_t command = 0; command < kDay.size(); ++command) {
      Prepare(command);
      day.RunCommand(command);
      said.push_back(day.Hands.Messages);
      clean.push_back(day.Found());
      entered.push_back(Entered());
    }
  }

  /// The day up to a command.
  void Prepare(std::size_t command) {
    day.Reset();
    for (std::size_t earlier = 0; earlier < command; ++earlier) day.RunCommand(earlier);
    day.Hands.Messages.clear();
  }

  /// The lines without what the hours calculation sets.
  Lines Entered() const {
    return Split(
        day.Ask("SELECT EMPL_NUMB, SORT_NAME, ETIME, ETIME_STOP, EVENT_TYPE, QUANTITY, QUAN_DESC, "
                "ENTERPRISE, OPERATION, EQUIP_NUMB, MEMO, RATE FROM OstrelPr ORDER BY rowid"));
  }

  /// Plays a command under a fault.
  ///   answer   to each report; before Retry the disk is put right
  ///   returns  whether the fault came about
  bool Play(std::size_t command, Fault kind, std::int64_t amount, BoxAnswer answer) {
    SCOPED_TRACE(std::string(kDay[command].Name) + " " + std::to_string(amount));
    Prepare(command);
    std::optional<FaultyDisk> fault(std::in_place, day.Laptop, kind, amount);
    const bool retries = answer == BoxAnswer::Retry;
    const auto healed = [&](BoxAnswer given) {
      if (retries) fault->End();
      return given;
    };
    day.Hands.OnReport = [&](const std::string&) { return healed(answer); };
    day.Hands.OnOkCancel = [&] {
      ++row["times disk not ready"];
      return healed(retries ? BoxAnswer::Ok : BoxAnswer::Cancel);
    };
    const bool ended = !Ran(command);
    const bool struck = fault->Struck;
    fault.reset();
    if (!struck) return false;
    ++row["runs"];
    row["reports"] += std::ssize(day.Hands.Reports);
    told = testing::PrintToString(day.Hands.Messages) + testing::PrintToString(day.Hands.Reports);
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
  void ExpectLines(std::size_t command) const {
    const Lines before = command <= kStart + 1 ? Lines() : entered[command - 1];
    Lines found = Entered(), all = entered[command];
    ASSERT_GE(found.size(), before.size());
    EXPECT_TRUE(std::equal(before.begin(), before.end(), found.begin()));
    std::sort(found.begin(), found.end());
    std::sort(all.begin(), all.end());
    EXPECT_TRUE(std::includes(all.begin(), all.end(), found.begin(), found.end()));
    EXPECT_EQ(day.Ask("PRAGMA integrity_check"), "ok");
  }

  std::string FilesAfterRestart() {
    day.Kill();
    return record.DamageAfter(day, 0, false);
  }

  /// The fault went unanswered: all is as it was or as it should be, and the next start is well.
  void ExpectWhole(std::size_t command) {
    const bool claimed =
        !said[command].empty() && day.Hands.Reports.empty() && day.Hands.Messages == said[command];
    EXPECT_TRUE(!claimed || day.Found() == clean[command]);
    if (command != kStart) ExpectLines(command);
    if (told.find("CalcEmplHours") != told.npos) AcceptUnfinishedHours();
    EXPECT_EQ(FilesAfterRestart(), "");
  }

  /// The operator went on without the hours: the file is whole, but need not have them.
  void AcceptUnfinishedHours() const {
    const std::string& whole = clean[kImport].at(kImportFile);
    const std::string found = day.Laptop.Folder.Read(kImportFile);
    if (!found.starts_with(whole.substr(0, whole.find("140")))) return;
    EXPECT_TRUE(found.ends_with("\"\r\n")) << found;
    day.Laptop.Folder.Write(kImportFile, whole);
  }

  /// The disk was put right when a report came: all is as without the fault, at the latest after the
  /// command, which was refused with a word, is given again.
  void ExpectDone(std::size_t command, bool ended) {
    if (command == kStop) return ExpectSettings();
    if (day.Found() == clean[command]) return;
    EXPECT_TRUE(ended || day.Hands.Messages != said[command]) << "not done, and not a word";
    ExpectLines(command);
    EXPECT_EQ(ended ? FilesAfterRestart() : "", "");
    if (command == kStart && !ended) day.Laptop.Stop();
    EXPECT_TRUE(Ran(command));
    EXPECT_TRUE(day.Found() == clean[command]);
  }

  /// A setting that cannot be written stays as it was, without a word.
  void ExpectSettings() const {
    ExpectLines(kStop);
    std::istringstream now(day.Laptop.Ini());
    for (std::string line; std::getline(now, line);) {
      EXPECT_NE(("\n" + clean[kStop].at("config/Halvane.ini")).find("\n" + line + "\n"), line.npos)
          << line;
    }
  }

  /// Control: an import file written straight into its place, ten times under the same fault.
  void WritePlainly(Fault fault) {
    const std::string& content = clean[kImport].at(kImportFile);
    for (int n = 1; n <= 10; ++n) {
      day.Reset();
      const std::string old = day.Laptop.Folder.Read(kImportFile);
      {
        const FaultyDisk disk(day.Laptop, fault, fault == Fault::Full ? 20 * n : n);
        day.Laptop.Folder.Write(kImportFile, content);
      }
      const std::string found = day.Laptop.Folder.Read(kImportFile);
      if (found != old && found != content) ++row.Control;
    }
  }

  WorkingDay day;
  DayRecord record;
  std::vector<Lines> said, entered;
  std::vector<Contents> clean;
  std::string told;  ///< by the run played last
  Row row{testing::UnitTest::GetInstance()->current_test_info()->name(),
          "times of 10 a plain writer's file is torn"};
};

constexpr BoxAnswer kAnswers[] = {BoxAnswer::Retry, BoxAnswer::Ignore};

TEST_F(DiskFaults, FullDisk) {
  Harm random;
  const int wanted = Runs(500, 40);
  for (int tries = 0; row["runs"] < wanted && tries < 10 * wanted && !HasFailure(); ++tries) {
    const std::size_t command = random.Below(kDay.size());
    const auto room = static_cast<std::int64_t>(random.Below(1U << random.Below(17)));
    if (!Play(command, Fault::Full, room, kAnswers[random.Below(2)])) continue;
    const bool names = told.find("space") != told.npos || told.find("full") != told.npos;
    EXPECT_TRUE(names || command == kStop) << kDay[command].Name << " " << room << told;
  }
  EXPECT_GE(row["runs"], wanted);
  WritePlainly(Fault::Full);
}

TEST_F(DiskFaults, IoErrors) {
  const std::pair<Fault, BoxAnswer> cases[] = {{Fault::Once, BoxAnswer::Retry},
                                               {Fault::ForGood, BoxAnswer::Retry},
                                               {Fault::ForGood, BoxAnswer::Ignore}};
  for (std::size_t command = 0; command < kDay.size(); ++command) {
    for (const auto& [fault, answer] : cases) {
      for (int n = 1; Play(command, fault, n, answer) && !HasFailure();) n += Runs(1, 7);
    }
  }
  WritePlainly(Fault::Once);
}

TEST_F(DiskFaults, PulledStick) {
  for (const std::size_t command : {kImport, kUpdate}) {
    for (const BoxAnswer answer : kAnswers) {
      for (int n = 1; Play(command, Fault::Pulled, n, answer) && !HasFailure();) ++n;
    }
  }
  EXPECT_GT(row["times disk not ready"], 0);
  WritePlainly(Fault::Pulled);
}

}  // namespace
}  // namespace ostrel
