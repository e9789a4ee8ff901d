// From the start of the process to the painted window, and the memory it then holds, with 250,000
// lines in the store. Each start is a process of its own.

#include <QProcess>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <vector>

#include "platform/files/files.h"
#include "platform/qt/qt_program.h"
#include "program/event_table.h"
#include "scan_main/scan_main.h"
#include "store_floor.h"
#include "support/payroll.h"

namespace {

constexpr int kLines = 250000;
constexpr int kStarts = 9;

double SecondsNow() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double ResidentMegabytes() {
  std::ifstream pages("/proc/self/statm");
  long all = 0, resident = 0;
  pages >> all >> resident;
  return static_cast<double>(resident) * 4096 / 1e6;
}

/// What main does, up to the painted window; prints the seconds of the clock and the memory.
int Start(int argc, char** argv) {
  ostrel::SetExecutable(argv[2], "OstrelPayroll");
  ostrel::QtProgram program(argc, argv);
  ostrel::LoadScanMain();
  program.Open(ostrel::ScanMain).repaint();
  QApplication::processEvents();
  std::cout << std::fixed << SecondsNow() << " " << ResidentMegabytes() << std::endl;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  if (argc == 3) return Start(argc, argv);
  ostrel::Payroll laptop;
  ostrel::FillStore(laptop.App("Prin1234.mdb"), kLines);
  std::vector<double> milliseconds;
  double megabytes = 0;
  for (int i = 0; i < kStarts; ++i) {
    QProcess process;
    const double begun = SecondsNow();
    process.start(argv[0], {"start", QString::fromStdString(laptop.Folder.Path("app"))});
    process.waitForFinished();
    const QList<QByteArray> answer = process.readAllStandardOutput().simplified().split(' ');
    if (answer.size() != 2) return 1;
    milliseconds.push_back((answer[0].toDouble() - begun) * 1000);
    megabytes = std::max(megabytes, answer[1].toDouble());
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  std::cout << "start to painted window, " << kLines << " lines: median "
            << milliseconds[kStarts / 2] << " ms, best " << milliseconds.front() << " ms, worst "
            << milliseconds.back() << " ms; resident " << megabytes << " MB\n";
  return 0;
}
