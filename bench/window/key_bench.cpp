// From a key press to the repainted window, off screen: typing, Enter on Save, and a page down among
// 250,000 lines. A hand that types without looking up feels anything above two frames of a screen.

#include <QEvent>
#include <QTest>

#include <algorithm>
#include <functional>
#include <iostream>
#include <vector>

#include "display/displayed_lines.h"
#include "platform/qt/qt_program.h"
#include "platform/values/clock.h"
#include "program/event_table.h"
#include "scan_main/scan_main.h"
#include "store_floor.h"
#include "support/payroll.h"

namespace {

constexpr int kLines = 250000;
constexpr int kKeys = 400;
constexpr double kMostMs = 1000;  // a key that repaints nothing by then shows as this

/// Whether the window has been painted since it was last asked.
class PaintWatch : public QObject {
 public:
  bool Painted() { return std::exchange(painted_, false); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return false;
  }

 private:
  bool painted_ = false;
};

class Keyboard {
 public:
  explicit Keyboard(ostrel::FormView& window) : window_(window) {
    qApp->installEventFilter(&watch_);
  }
  ~Keyboard() { qApp->removeEventFilter(&watch_); }
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  /// Milliseconds from the key to the end of the painting that follows it.
  double Press(Qt::Key key) {
    Settle();
    const auto start = std::chrono::steady_clock::now();
    const auto taken = [&] {
      return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
          .count();
    };
    QTest::sendKeyEvent(QTest::Click, window_.focusWidget(), key, QString(TextOf(key)),
                        Qt::NoModifier);
    do {
      QApplication::processEvents();
    } while (!watch_.Painted() && taken() < kMostMs);
    return taken();
  }

 private:
  static QString TextOf(Qt::Key key) {
    if (key == Qt::Key_Return) return "\r";
    return key >= Qt::Key_0 && key <= Qt::Key_9 ? QString(QChar(key)) : QString();
  }
  void Settle() {
    do {
      QApplication::processEvents();
    } while (watch_.Painted());
  }

  ostrel::FormView& window_;
  PaintWatch watch_;
};

void Report(const char* what, std::vector<double> milliseconds) {
  std::sort(milliseconds.begin(), milliseconds.end());
  std::cout << what << ": median " << milliseconds[milliseconds.size() / 2]
            << " ms, 99th percentile " << milliseconds[milliseconds.size() * 99 / 100]
            << " ms, worst " << milliseconds.back() << " ms\n";
}

std::vector<double> Times(const std::function<double()>& press) {
  std::vector<double> milliseconds(kKeys);
  for (double& each : milliseconds) each = press();
  return milliseconds;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace ostrel;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  Payroll laptop;
  FillStore(laptop.App("Prin1234.mdb"), kLines);
  QtProgram program(argc, argv);
  SetClock([] { return Moment{kLastDay + 0.75}; });
  LoadScanMain();
  FormView& window = program.Open(ScanMain);
  if (!QTest::qWaitForWindowExposed(&window)) return 1;

  Keyboard keyboard(window);
  Report("typing in a box", Times([&] { return keyboard.Press(Qt::Key_1); }));
  txtInput[kEmplBox].Text = "130";
  Option1[kClockIn].Value = true;
  Report("Enter on Save, 700 lines on show", Times([&] {
           cmdSave.SetFocus();
           return keyboard.Press(Qt::Key_Return);
         }));
  txtToday.Text = "All";
  SetRecordSource();
  TDBGrid1.SetFocus();
  Report("page down among 250,000 lines", Times([&] { return keyboard.Press(Qt::Key_PageDown); }));
  return 0;
}
