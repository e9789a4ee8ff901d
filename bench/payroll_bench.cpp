// The foreman's commands, from the click to store, view and totals brought up to date, against raw
// SQLite doing the same writes with the same durability.

#include <array>
#include <fstream>

#include <fcntl.h>
#include <unistd.h>

#include "against_floor.h"
#include "display/displayed_lines.h"
#include "entry/write_line.h"
#include "frame/app_state.h"
#include "hours/employee_hours.h"
#include "store_floor.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

constexpr int kBigDayLines = 5000;
constexpr const char* kNow = "06/14/04 5:30 pm";

/// The program started on a store of so many lines, 700 of them on the day on show.
class Started {
 public:
  explicit Started(int lines) {
    FillStore(Path(), lines);
    laptop_.SetClock(kNow);
    laptop_.Start();
  }
  std::string Path() const { return laptop_.App("Prin1234.mdb"); }
  std::string Disk(std::string_view name) const { return laptop_.Disk(name); }
  ScriptedDesktop& Desktop() { return laptop_.Desktop; }

 private:
  Payroll laptop_;
};

void Save(benchmark::State& state) {
  Started started(static_cast<int>(state.range(0)));
  const RawStore raw(started.Path());
  txtInput[kEmplBox].Text = "130";
  Option1[kClockIn].Value = true;
  AgainstFloor(
      state, [&] { AddOneLine(raw); }, [] { cmdSave.Press(); });
}

/// A day of 200 employees: each clocks in, does 23 pieces of work and clocks out.
void MakeBigDay(const RawStore& raw) {
  raw.Run("DELETE FROM OstrelPr WHERE ETIME >= 38152");
  raw.Run(
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < 5000) "
      "INSERT INTO OstrelPr SELECT 101 + i % 200, 'EMPLOYEE', 38152 + (420 + i / 200 * 20) / "
      "1440.0, NULL, "
      "CASE i / 200 WHEN 0 THEN 'I' WHEN 24 THEN 'O' ELSE 'P' END, i % 7 * 12.5 + 1, 'BOX', 1, i % "
      "5, 3, "
      "'block', 0.27, NULL, NULL, NULL FROM n");
}

std::vector<std::int64_t> RowsOfDay(const RawStore& raw) {
  std::vector<std::int64_t> ids = ListRowsByTime(raw);
  ids.resize(kBigDayLines);
  return ids;
}

void HoursOfADay(benchmark::State& state) {
  Started started(static_cast<int>(state.range(0)));
  const RawStore raw(started.Path());
  MakeBigDay(raw);
  SetRecordSource();
  const std::vector<std::int64_t> ids = RowsOfDay(raw);
  AgainstFloor(
      state, [&] { RewriteRows(raw, ids); }, [] { CalcEmplHours(); });
}

void WriteFlushed(const std::string& path, std::size_t bytes) {
  const std::string content(bytes, 'x');
  const int file = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
  if (write(file, content.data(), content.size()) < 0 || fsync(file) != 0 || close(file) != 0)
    std::abort();
}

void ImportFile(benchmark::State& state) {
  Started started(static_cast<int>(state.range(0)));
  const RawStore raw(started.Path());
  MakeBigDay(raw);
  SetRecordSource();
  const std::vector<std::int64_t> ids = RowsOfDay(raw);
  constexpr std::size_t bytesOfALine = 55;
  AgainstFloor(
      state,
      [&] {
        RewriteRows(raw, ids);
        WriteFlushed(started.Disk("floor.asc"), kBigDayLines * bytesOfALine);
      },
      [&] {
        started.Desktop().WillAnswer(BoxAnswer::Ok);
        mnuWriteImportFile.Click();
      });
}

/// The query and the totals behind it; the floor lists the row ids alone.
void ViewOfAllDates(benchmark::State& state) {
  Started started(static_cast<int>(state.range(0)));
  const RawStore raw(started.Path());
  txtToday.Text = "All";
  AgainstFloor(
      state, [&] { benchmark::DoNotOptimize(ListRowsByTime(raw)); }, [] { SetRecordSource(); });
}

void ViewOfAllDatesAlone(benchmark::State& state) {
  Started started(static_cast<int>(state.range(0)));
  const RawStore raw(started.Path());
  txtToday.Text = "All";
  SetRecordSource();
  AgainstFloor(
      state, [&] { benchmark::DoNotOptimize(ListRowsByTime(raw)); }, [] { Data1.Refresh(); });
}

BENCHMARK(Save)
    ->Arg(7000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(300);
BENCHMARK(HoursOfADay)
    ->Arg(7000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
BENCHMARK(ImportFile)
    ->Arg(7000)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
BENCHMARK(ViewOfAllDatesAlone)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);
BENCHMARK(ViewOfAllDates)
    ->Arg(250000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(15);

}  // namespace
}  // namespace ostrel

BENCHMARK_MAIN();
