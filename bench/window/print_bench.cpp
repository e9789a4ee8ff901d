// 5,000 lines on about a hundred sheets, from the view to the finished PDF, against a bare Qt program
// that draws the same texts at the same places. And the memory that a long print job takes.

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <QApplication>
#include <QPainter>
#include <QPdfWriter>

#include "against_floor.h"
#include "platform/desktop/grid_print.h"
#include "platform/qt/fitted_text.h"
#include "platform/qt/qt_printing.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/scaling.h"
#include "scan_main/scan_main.h"
#include "store_floor.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

constexpr int kLines = 5000, kManyLines = 50000;

class PrintingDesktop : public ScriptedDesktop {
 public:
  std::unique_ptr<PrintJob> StartPrintJob(const PrintJobRequest& request) override {
    return ForReal ? StartQtPrintJob(request) : ScriptedDesktop::StartPrintJob(request);
  }
  bool ForReal = true;
};

/// All lines of a store on show.
class View {
 public:
  explicit View(int lines) {
    FillStore(laptop_.App("Prin1234.mdb"), lines);
    laptop_.Start();
    laptop_.Choose(mnuDisplayAllDates);
  }
  void Print() { PrintData(TDBGrid1, {.Name = "bench", .Folder = laptop_.App()})->EndDoc(); }
  RecordedDocument Record() {
    desktop_.ForReal = false;
    Print();
    desktop_.ForReal = true;
    return desktop_.Paper().Documents.back();
  }
  std::string Path(const char* name) const { return laptop_.App(name); }

 private:
  Payroll laptop_;
  PrintingDesktop desktop_;
};

void DrawBare(const RecordedDocument& document, const std::string& path) {
  constexpr int kDotsPerInch = 1440, kBaseline = 190;
  QPdfWriter writer(ToQt(path));
  writer.setResolution(kDotsPerInch);
  writer.setPageSize(QPageSize(QPageSize::Letter));
  writer.setPageMargins(QMarginsF(0, 0, 0, 0));
  QPainter painter(&writer);
  painter.setFont(FormFont(Scaling::kTwipsPerPixel));
  for (std::size_t page = 0; page < document.Pages.size(); ++page) {
    if (page > 0) writer.newPage();
    for (const RecordedText& text : document.Pages[page].Texts) {
      painter.drawText(QPointF(text.Where.Left, text.Where.Top + kBaseline), ToQt(text.Text));
    }
  }
}

void PrintLines(benchmark::State& state) {
  View view(kLines);
  const RecordedDocument document = view.Record();
  AgainstFloor(
      state, [&] { DrawBare(document, view.Path("bare.pdf")); }, [&] { view.Print(); });
  state.counters["pages"] = static_cast<double>(document.Pages.size());
}
BENCHMARK(PrintLines)->UseManualTime()->Unit(benchmark::kMillisecond);

#ifndef _WIN32
double PeakMegabytes() {
  constexpr double kKilobytesPerMegabyte = 1024;
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / kKilobytesPerMegabyte;
}

/// What a thousand sheets take beyond a hundred.
void MemoryOfALongJob(benchmark::State& state) {
  View(kLines).Print();
  View view(kManyLines);
  const double before = PeakMegabytes();
  for ([[maybe_unused]] auto _ : state) view.Print();
  state.counters["more_megabytes"] = PeakMegabytes() - before;
}
BENCHMARK(MemoryOfALongJob)->Iterations(1)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace ostrel

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("CUPS_SERVER", "/no/printer/here");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
