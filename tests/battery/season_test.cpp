// A season without a restart: the memory, the work a line and every night's import file.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sqlite3.h>

#include <chrono>
#include <functional>
#include <vector>

#include "battery/battery.h"
#include "battery/harm.h"
#include "entry/scan_main.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "support/agreeing_desktop.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

constexpr int kPeople = 60, kPiecesADay = 280;
constexpr int kLinesADay = kPeople + kPiecesADay + kPeople;
constexpr int kFirstDay = 38309;  // 11/18/04
constexpr int kOpeningMinute = 6 * 60;

/// Steps of SQLite's machine, on every store that is opened while it lives.
class SqliteSteps {
 public:
  SqliteSteps() { sqlite3_auto_extension(reinterpret_cast<void (*)()>(&Watch)); }
  ~SqliteSteps() { sqlite3_reset_auto_extension(); }
  SqliteSteps(const SqliteSteps&) = delete;
  SqliteSteps& operator=(const SqliteSteps&) = delete;

  static inline std::int64_t Taken = 0;

 private:
  static int Watch(sqlite3* handle, const char**, const sqlite3_api_routines*) {
    return sqlite3_trace_v2(handle, SQLITE_TRACE_PROFILE, Count, nullptr);
  }
  static int Count(unsigned, void*, void* statement, void*) {
    auto* done = static_cast<sqlite3_stmt*>(statement);
    Taken += sqlite3_stmt_status(done, SQLITE_STMTSTATUS_VM_STEP, 1);
    return 0;
  }
};

/// The laptop and the foreman, from one start to the next.
class Laptop {
 public:
  Laptop() { payroll_.Start(); }

  /// Enters the lines of a day by the form, less `less` at the end, and writes the import file.
  std::string WorkDay(int day, int less = 0) {
    const std::string date = Format(Moment{static_cast<double>(kFirstDay + day)}, "mm/dd/yy");
    payroll_.SetClock((date + " 6:00 am").c_str());
    txtToday.SetFocus();
    payroll_.Keys(date + "\t");
    Harm random(kSeed + static_cast<unsigned>(day));
    for (int line = 0; line < kLinesADay - less; ++line) EnterLine(date, line, random);
    steps_ = SqliteSteps::Taken;
    payroll_.Choose(mnuWriteImportFile);
    EXPECT_EQ(operator_.Messages.size(), 1U);
    EXPECT_TRUE(operator_.Reports.empty());
    operator_.Messages.clear();
    return ReadWholeFile(payroll_.Disk("Pck-1234.asc"));
  }

  std::string Store() const { return payroll_.App("Prin1234.mdb"); }
  std::int64_t StepsBeforeTheNight() const { return steps_; }

 private:
  void EnterLine(const std::string& date, int line, Harm& random) {
    const double time = (kOpeningMinute + line * 1.5) / 1440;
    payroll_.SetClock((date + " " + Format(time, "hh:mm am/pm")).c_str());
    const bool in = line < kPeople, out = line >= kPeople + kPiecesADay;
    Option1[in ? kClockIn : out ? kClockOut : kPiecework].Press();
    payroll_.Fill(txtInput[kQuantityBox], in || out ? "0" : std::to_string(20 + random.Below(70)));
    payroll_.Fill(txtInput[kQuanDescBox], "BOX");
    payroll_.Fill(txtInput[kRateBox], "0." + std::to_string(11 + random.Below(80)));
    payroll_.Fill(txtInput[kEnterpriseBox], std::to_string(1 + line % 5));
    payroll_.Fill(txtInput[kMemoBox], "row " + std::to_string(random.Below(50)));
    const int employee =
        101 + (in || out ? line % kPeople : static_cast<int>(random.Below(kPeople)));
    payroll_.Save(std::to_string(employee));
  }

  Payroll payroll_;
  AgreeingDesktop operator_{payroll_.Desktop, BoxAnswer::Abort};
  std::int64_t steps_ = 0;
};

/// What a day has cost.
struct DayCost {
  std::int64_t Steps = 0;   // while its lines were entered
  std::int64_t Memory = 0;  // bytes in use at its end, without SQLite's cache, which has a bound
  double Microseconds = 0;  // a line, the night included
};

bool WorkIsFlat(const DayCost& early, const DayCost& late) {
  return late.Steps <= early.Steps * 11 / 10;
}
/// The list of the lines' rows grows with the season: 8 bytes a line, in a vector that may have twice
/// the room.
bool MemoryIsFlat(const DayCost& early, const DayCost& late, int days) {
  return late.Memory - early.Memory <= std::int64_t{days} * kLinesADay * 24 + 200'000;
}

/// Of a file's content; the content of a season of them would drown what the program keeps.
using Digest = std::size_t;

DayCost Measure(Laptop& laptop, int day, Digest& file) {
  DayCost cost;
  const std::int64_t before = SqliteSteps::Taken;
  const auto start = std::chrono::steady_clock::now();
  file = std::hash<std::string>()(laptop.WorkDay(day));
  const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
  cost.Steps = laptop.StepsBeforeTheNight() - before;
  cost.Memory = static_cast<std::int64_t>(mallinfo2().uordblks) - sqlite3_memory_used();
  cost.Microseconds = taken.count() / kLinesADay;
  return cost;
}

TEST(LongRun, ASeasonCostsTheSameADay) {
  const SqliteSteps steps;
  const int days = Runs(180, 6);
  std::vector<Digest> files(static_cast<std::size_t>(days));
  std::vector<DayCost> costs;
  std::int64_t steepSteps = 0;
  {
    Laptop laptop;
    for (int day = 0; day < days; ++day) {
      costs.push_back(Measure(laptop, day, files[static_cast<std::size_t>(day)]));
    }
    EXPECT_EQ(AskSqlite(laptop.Store(), "SELECT count(*) FROM OstrelPr"),
              std::to_string(days * kLinesADay));
    EXPECT_LT(sqlite3_memory_used(), 48 << 20);
    // Control: without the store's index a line costs the more, the more lines there are.
    AskSqlite(laptop.Store(), "DROP INDEX dTime");
    Digest file = 0;
    const DayCost steep = Measure(laptop, days, file);
    EXPECT_FALSE(WorkIsFlat(costs[1], steep));
    steepSteps = steep.Steps;
  }
  const DayCost& early = costs[1];
  const DayCost& late = costs.back();
  EXPECT_TRUE(WorkIsFlat(early, late)) << early.Steps << " " << late.Steps;
  EXPECT_TRUE(MemoryIsFlat(early, late, days)) << early.Memory << " " << late.Memory;
  // Control: a hundred bytes a line that nobody gives back.
  const DayCost leaking{0, late.Memory + std::int64_t{100} * kLinesADay * days + 200'000, 0};
  EXPECT_FALSE(MemoryIsFlat(early, leaking, days));

  for (int day = 0; day < days; ++day) {
    SCOPED_TRACE("day " + std::to_string(day));
    const std::string alone = Laptop().WorkDay(day);
    EXPECT_EQ(std::hash<std::string>()(alone), files[static_cast<std::size_t>(day)]);
  }
  EXPECT_NE(std::hash<std::string>()(Laptop().WorkDay(0, 1)), files[0]) << "with a line less";
  const auto number = [](auto count) { return std::to_string(static_cast<std::int64_t>(count)); };
  Figure("Long run",
         number(days) + " days of " + number(kLinesADay) +
             " lines, each import file as by itself; " +
             "day 2 and the last: " + number(early.Steps / kLinesADay) + " and " +
             number(late.Steps / kLinesADay) + " steps a line, " + number(early.Microseconds) +
             " and " + number(late.Microseconds) + " us a line, " + number(early.Memory / 1024) +
             " and " + number(late.Memory / 1024) + " KB in use; seed " + number(kSeed) +
             "; control: " + number(steepSteps / kLinesADay) + " steps a line without the index");
}

}  // namespace
}  // namespace ostrel
