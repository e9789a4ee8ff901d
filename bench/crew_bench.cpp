// The commands over a whole crew and the minimum wage watch, from the click to lines, view and totals
// brought up to date, against raw SQLite writing the same lines in one durable commit.

#include "against_floor.h"
#include "display/displayed_lines.h"
#include "scan_main/scan_main.h"
#include "started.h"
#include "support/dbf_builder.h"

namespace ostrel {
namespace {

constexpr int kLines = 250000;
constexpr int kCrew = 500;
constexpr int kClockedIn = 2000;

/// Employees 1001 and on, all of crew 7.
std::string Employees(int count) {
  DbfBuilder table;
  table.Field("EMPL_NUMB", 'N', 6).Field("SORT_NAME", 'C', 15).Field("CREW", 'N', 3);
  for (int i = 0; i < count; ++i) table.Row({std::to_string(1001 + i), "EMPLOYEE", "7"});
  return table.Bytes();
}

void WriteLines(const RawStore& raw, int count, const char* eventType) {
  sqlite3_stmt* line = raw.Prepare(
      "INSERT INTO OstrelPr VALUES(?1, 'EMPLOYEE', 38152.7, NULL, ?2, 0, ' ', 0, 0, 0, ' ', 0, 0, "
      "NULL, NULL)");
  raw.Run("BEGIN IMMEDIATE");
  for (int i = 0; i < count; ++i) {
    sqlite3_bind_int(line, 1, 1001 + i);
    sqlite3_bind_text(line, 2, eventType, 1, SQLITE_STATIC);
    sqlite3_step(line);
    sqlite3_reset(line);
  }
  raw.Run("COMMIT");
  sqlite3_finalize(line);
}

void ClockInACrew(benchmark::State& state) {
  Started started(kLines, Employees(kCrew));
  const RawStore raw(started.Path());
  AgainstFloor(
      state, [&] { WriteLines(raw, kCrew, "I"); },
      [&] {
        started.Desktop().WillType("7");
        started.Desktop().WillAnswer(BoxAnswer::Ok);
        mnuClockInACrew.Click();
      },
      [&] { raw.Run("DELETE FROM OstrelPr WHERE EMPL_NUMB > 1000"); });
}

void DayCommand(benchmark::State& state, MenuItem& menu, const char* eventType) {
  Started started(kLines, Employees(kClockedIn));
  const RawStore raw(started.Path());
  raw.Run("DELETE FROM OstrelPr WHERE ETIME >= 38152");
  WriteLines(raw, kClockedIn, "I");
  raw.Run("UPDATE OstrelPr SET ETIME = 38152.25 WHERE ETIME >= 38152");
  SetRecordSource();
  AgainstFloor(
      state, [&] { WriteLines(raw, kClockedIn, eventType); },
      [&] {
        started.Desktop().WillAnswer(BoxAnswer::Yes);
        started.Desktop().WillAnswer(BoxAnswer::Ok);
        menu.Click();
      },
      [&] { raw.Run("DELETE FROM OstrelPr WHERE ETIME > 38152.25"); });
}

void ClockOutAll(benchmark::State& state) { DayCommand(state, mnuClockoutAllEmpls, "O"); }
void ReClockInAll(benchmark::State& state) { DayCommand(state, mnuReClockInAllEmpls, "I"); }

void MinimumWageWatch(benchmark::State& state) {
  Started started(kLines);
  const RawStore raw(started.Path());
  MakeBigDay(raw);
  SetRecordSource();
  const std::vector<std::int64_t> ids = RowsOfBigDay(raw);
  AgainstFloor(
      state, [&] { RewriteRows(raw, ids); },
      [&] {
        started.Desktop().WillAnswer(BoxAnswer::Ok);
        mnuMinWageWatch.Click();
      });
}

BENCHMARK(ClockInACrew)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK(ClockOutAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK(ReClockInAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK(MinimumWageWatch)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);

}  // namespace
}  // namespace ostrel

BENCHMARK_MAIN();
