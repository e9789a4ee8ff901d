// The foreman's commands, from the click to store, view and totals brought up to date, against raw
// SQLite doing the same writes with the same durability.

#include <fstream>

#include <fcntl.h>
#include <unistd.h>

#include "against_floor.h"
#include "display/displayed_lines.h"
#include "hours/employee_hours.h"
#include "scan_main/scan_main.h"
#include "started.h"

namespace ostrel {
namespace {

void Save(benchmark::State& state) {
  Started started(static_cast<int>(state.range(0)));
  const RawStore raw(started.Path());
  txtInput[kEmplBox].Text = "130";
  Option1[kClockIn].Value = true;
  AgainstFloor(
      state, [&] { AddOneLine(raw); }, [] { cmdSave.Press(); });
}

void HoursOfADay(benchmark::State& state) {
  Started started(static_cast<int>(state.range(0)));
  const RawStore raw(started.Path());
  MakeBigDay(raw);
  SetRecordSource();
  const std::vector<std::int64_t> ids = RowsOfBigDay(raw);
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
  const std::vector<std::int64_t> ids = RowsOfBigDay(raw);
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
      state, [&] { benchmark::DoNotOptimize(ListRowsByTime(raw)); }, [] { SetRecordSource(); },
      [&] { raw.Run("UPDATE OstrelPr SET HOURS = 1 WHERE rowid = 1"); });
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
