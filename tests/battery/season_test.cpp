// A season without a restart: the memory, the work a line and every night's import file.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sqlite3.h>

#include <functional>
#include <vector>

#include "battery/battery.h"
#include "platform/values/format.h"
#include "scan_main/scan_main.h"
#include "support/agreeing_desktop.h"
#include "support/ask_sqlite.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

constexpr int kPeople = 60, kPiecesADay = 280;
constexpr int kLinesADay = kPeople + kPiecesADay + kPeople;
constexpr int kFirstDay = 38309;  // 11/18/04
constexpr int kOpeningMinute = 6 * 60;

/// Of SQLite's machine.
std::int64_t stepsTaken = 0;

/// Counts the steps on every store that is opened from here on.
void CountSteps() {
  const auto watch = [](sqlite3* store, const char**, const sqlite3_api_routines*) {
    const auto count = [](unsigned, void*, void* statement, void*) {
      auto* done = static_cast<sqlite3_stmt*>(statement);
      stepsTaken += sqlite3_stmt_status(done, SQLITE_STMTSTATUS_VM_STEP, 1);
      return 0;
    };
    return sqlite3_trace_v2(store, SQLITE_TRACE_PROFILE, count, nullptr);
  };
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(+watch));
}

/// What a day has cost.
struct DayCost {
  std::int64_t Steps = 0;   // while its lines were entered
  std::int64_t Memory = 0;  // bytes in use at its end, without SQLite's cache, which has a bound
  std::size_t File = 0;     // the import file's digest: a season of them would drown what is kept
};

bool WorkIsFlat(const DayCost& early, const DayCost& late) {
  return late.Steps <= early.Steps * 11 / 10;
}
/// The list of the lines' rows grows with the season: 8 bytes a line, in a vector that may have twice
/// the room.
bool MemoryIsFlat(const DayCost& early, const DayCost& late, int days) {
  return late.Memory - early.Memory <= std::int64_t{days} * kLinesADay * 24 + 200'000;
}

/// The laptop and the foreman, from one start to the next.
class Laptop {
 public:
  Laptop() { payroll_.Start(); }

  /// Enters the lines of a day by the form, less `less` at the end, and writes the import file.
  DayCost WorkDay(int day, int less = 0) {
    DayCost cost{-stepsTaken};
    const std::string date = Format(Moment{static_cast<double>(kFirstDay + day)}, "mm/dd/yy");
    payroll_.SetClock((date + " 6:00 am").c_str());
    payroll_.Fill(txtToday, date);
    Harm random(kSeed + static_cast<unsigned>(day));
    for (int line = 0; line < kLinesADay - less; ++line) EnterLine(date, line, random);
    cost.Steps += stepsTaken;
    payroll_.Choose(mnuWriteImportFile);
    EXPECT_EQ(operator_.Messages.size(), 1U);
    EXPECT_TRUE(operator_.Reports.empty());
    operator_.Messages.clear();
    cost.File = std::hash<std::string>()(ReadWholeFile(payroll_.Disk("Pck-1234.asc")));
    cost.Memory = static_cast<std::int64_t>(mallinfo2().uordblks) - sqlite3_memory_used();
    return cost;
  }

  std::string Ask(const char* sql) const { return AskSqlite(payroll_.App("Prin1234.mdb"), sql); }

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
};

TEST(LongRun, ASeasonCostsTheSameADay) {
  CountSteps();
  const int days = Runs(180, 6);
  std::vector<DayCost> costs;
  costs.reserve(static_cast<std::size_t>(days));
  DayCost steep;
  {
    Laptop laptop;
    for (int day = 0; day < days; ++day) costs.push_back(laptop.WorkDay(day));
    EXPECT_EQ(laptop.Ask("SELECT count(*) FROM OstrelPr"), std::to_string(days * kLinesADay));
    EXPECT_LT(sqlite3_memory_used(), 48 << 20);
    // Control: without the store's index a line costs the more, the more lines there are.
    laptop.Ask("DROP INDEX dTime");
    steep = laptop.WorkDay(days);
  }
  const DayCost &early = costs[1], &late = costs.back();
  EXPECT_TRUE(WorkIsFlat(early, late)) << early.Steps << " " << late.Steps;
  EXPECT_FALSE(WorkIsFlat(early, steep));
  EXPECT_TRUE(MemoryIsFlat(early, late, days)) << early.Memory << " " << late.Memory;
  // Control: a hundred bytes a line that nobody gives back.
  const DayCost leaking{0, late.Memory + std::int64_t{100} * kLinesADay * days + 200'000};
  EXPECT_FALSE(MemoryIsFlat(early, leaking, days));

  for (int day = 0; day < days; ++day) {
    EXPECT_EQ(Laptop().WorkDay(day).File, costs[static_cast<std::size_t>(day)].File) << day;
  }
  EXPECT_NE(Laptop().WorkDay(0, 1).File, costs[0].File) << "with a line less";
  Row row("Long run", "steps a line without the index");
  row["days"] = days;
  row["steps a line on day 2"] = early.Steps / kLinesADay;
  row["on the last"] = late.Steps / kLinesADay;
  row.Control = steep.Steps / kLinesADay;
}

}  // namespace
}  // namespace ostrel
