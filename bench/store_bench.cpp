// The timecard store with 250,000 lines, 700 of them on the last day, against SQLite alone.

#include "against_floor.h"
#include "store/day_lines.h"
#include "store/line_table.h"
#include "store_floor.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

constexpr int kLines = 250000;
constexpr std::size_t kRewritten = 5000;

const std::string& Path() {
  static const TempFolder folder;
  static const std::string path = [] {
    FillStore(folder.Path("Prin1234.mdb"), kLines);
    return folder.Path("Prin1234.mdb");
  }();
  return path;
}

void OpenStore(benchmark::State& state) {
  AgainstFloor(
      state, [] { ListRowsByTime(RawStore(Path())); }, [] { OpenTimecards(Path()); });
}

void OpenStoreAgain(benchmark::State& state) {
  const Database held = OpenTimecards(Path());
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(OpenTimecards(Path()));
}

void OpenViewOfAllDates(benchmark::State& state) {
  const RawStore raw(Path());
  const Database db = OpenTimecards(Path());
  AgainstFloor(
      state, [&] { benchmark::DoNotOptimize(ListRowsByTime(raw)); },
      [&] {
        benchmark::DoNotOptimize(
            db.OpenRecordset("Select * from [OstrelPr] Order by ETIME Desc").RowCount());
      });
}

void OpenViewInEmployeeOrder(benchmark::State& state) {
  const RawStore raw(Path());
  const Database db = OpenTimecards(Path());
  AgainstFloor(
      state, [&] { benchmark::DoNotOptimize(ListRowsByTime(raw)); },
      [&] {
        benchmark::DoNotOptimize(
            db.OpenRecordset("Select * from [OstrelPr] Order by EMPL_NUMB, ETIME").RowCount());
      });
}

void RewriteInOneCommit(benchmark::State& state) {
  const RawStore raw(Path());
  const Database db = OpenTimecards(Path());
  std::vector<std::int64_t> ids = ListRowsByTime(raw);
  ids.resize(kRewritten);
  Recordset lines = db.OpenRecordset("Select * from [OstrelPr] Order by ETIME Desc");
  AgainstFloor(
      state, [&] { RewriteRows(raw, ids); },
      [&] {
        const Gathering gathering(db);
        lines.MoveFirst();
        for (std::size_t row = 0; row < kRewritten; ++row, lines.MoveNext()) {
          const Value quantity = lines["QUANTITY"].Get();
          for (const char* field : {"SORT_NAME", "EVENT_TYPE", "QUAN_DESC", "MEMO"}) {
            benchmark::DoNotOptimize(lines[field].Get());
          }
          lines.Edit();
          lines["GROSS"] = quantity;
          lines["HOUR_GROSS"] = quantity;
          lines["HOURS"] = quantity;
          lines.Update();
        }
        gathering.Settle();
      });
}

void AddAndCommitOneLine(benchmark::State& state) {
  const RawStore raw(Path());
  Recordset lines = OpenTimecards(Path()).OpenRecordset("OstrelPr");
  AgainstFloor(
      state, [&] { AddOneLine(raw); },
      [&] {
        lines.AddNew();
        lines["EMPL_NUMB"] = 130;
        lines["ETIME"] = "06/14/04 12:00 pm";
        lines["EVENT_TYPE"] = "P";
        lines["QUANTITY"] = 100;
        lines["QUAN_DESC"] = "BOX";
        lines["RATE"] = 0.27;
        lines.Update();
      });
}

void ReadFieldsOfARow(benchmark::State& state) {
  const Database db = OpenTimecards(Path());
  Recordset lines = db.OpenRecordset("Select * from [OstrelPr] Order by ETIME Desc");
  const Gathering gathering(db);
  lines.Edit();
  lines["HOURS"] = 1;
  lines.Update();
  for ([[maybe_unused]] auto _ : state) {
    lines.MoveNext();
    for (const char* field :
         {"EMPL_NUMB", "ETIME", "EVENT_TYPE", "QUANTITY", "RATE", "GROSS", "HOURS", "MEMO"}) {
      benchmark::DoNotOptimize(lines[field].Get());
    }
    if (lines.GetBookmark() < 1000) lines.MoveFirst();
  }
}

void AskForEachEmployeesDay(benchmark::State& state) {
  const Database db = OpenTimecards(Path());
  for ([[maybe_unused]] auto _ : state) {
    const Look look(db);
    DayLines day(db, " where INT(ETIME) = #" + std::string(kLastDayText) + "#");
    for (int number = 101; number < 101 + kEmployees; ++number) {
      benchmark::DoNotOptimize(day.Of(number));
    }
  }
}

void SumOverTheDay(benchmark::State& state) {
  const Database db = OpenTimecards(Path());
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(
        db.OpenRecordset("SELECT Sum(GROSS) as X from [OstrelPr] where INT(ETIME) = #" +
                         std::string(kLastDayText) + "#")["X"]
            .Get());
  }
}

BENCHMARK(OpenStore)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(OpenStoreAgain)->Unit(benchmark::kMicrosecond);
BENCHMARK(OpenViewOfAllDates)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(OpenViewInEmployeeOrder)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(RewriteInOneCommit)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(AddAndCommitOneLine)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReadFieldsOfARow);
BENCHMARK(AskForEachEmployeesDay)->Unit(benchmark::kMillisecond);
BENCHMARK(SumOverTheDay)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace ostrel

BENCHMARK_MAIN();
