// Plays a foreman's day by real key events on the real window: a clock-in, piecework, a clock-out,
// and Ctrl+W for the import file. For machines without a display, where nobody could type it.
//
//   play_sample_day <application folder> <folder for the results>
//
// The results are a picture of the window after each step and of each box, the import file and the
// store. The day runs on a clock of its own, from seven in the morning.

#include <QApplication>
#include <QDir>
#include <QTest>
#include <QTimer>

#include <iostream>

#include "frame/app_state.h"
#include "platform/files/files.h"
#include "platform/qt/qt_program.h"
#include "platform/values/calendar.h"
#include "platform/values/clock.h"
#include "platform/values/dates.h"
#include "program/event_table.h"
#include "scan_main/scan_main.h"

namespace {

/// Saves numbered pictures of what the foreman sees.
class Album {
 public:
  explicit Album(const QDir& folder) : folder_(folder) {}
  void Add(QWidget& widget, const QString& name) {
    const QString file = QString("%1-%2.png").arg(++count_, 2, 10, QChar('0')).arg(name);
    widget.grab().save(folder_.filePath(file));
  }

 private:
  QDir folder_;
  int count_ = 0;
};

/// Presses Enter in every box that comes up, once it has been pictured.
class BoxPresser {
 public:
  explicit BoxPresser(Album& album) {
    QObject::connect(&timer_, &QTimer::timeout, [&album] {
      QWidget* box = QApplication::activeModalWidget();
      if (box == nullptr || !box->isVisible()) return;
      album.Add(*box, "box");
      QTest::keyClick(box, Qt::Key_Return);
    });
    timer_.start(50);
  }

 private:
  QTimer timer_;
};

class Foreman {
 public:
  Foreman(ostrel::FormView& window, Album& album) : window_(window), album_(album) {}

  void At(const char* time) {
    const double day = ostrel::DayOf(ostrel::Moment{today_});
    const ostrel::Moment now{day + ostrel::TimeValue(time)};
    ostrel::SetClock([now] { return now; });
  }

  /// Characters type themselves; "\r" is Enter.
  void Types(const char* keys) {
    for (; *keys != '\0'; ++keys) {
      if (*keys == '\r') {
        QTest::keyClick(Focused(), Qt::Key_Return);
      } else {
        QTest::keyClick(Focused(), *keys);
      }
    }
  }

  void Presses(Qt::Key key, Qt::KeyboardModifier modifier) {
    window_.activateWindow();  // no window manager does it here when a box has closed
    QApplication::processEvents();
    QTest::keyClick(Focused(), key, modifier);
  }
  /// Keys for the menu that is open.
  void PressesInMenu(std::initializer_list<Qt::Key> keys) {
    for (const Qt::Key key : keys) {
      QApplication::processEvents();
      if (QWidget* menu = QApplication::activePopupWidget()) QTest::keyClick(menu, key);
    }
  }
  void Shows(const QString& name) { album_.Add(window_, name); }

 private:
  QWidget* Focused() const {
    QWidget* focused = window_.focusWidget();
    return focused != nullptr ? focused : &window_;
  }

  ostrel::FormView& window_;
  Album& album_;
  double today_ = ostrel::Now().Days;
};

void PlayDay(Foreman& foreman) {
  foreman.At("7:00 am");
  foreman.Shows("start");
  foreman.Types("103\r\r107\r\r112\r\r");  // clock-in: number, Enter, Enter
  foreman.Shows("clocked-in");
  foreman.At("11:30 am");
  foreman.Presses(Qt::Key_P, Qt::AltModifier);
  foreman.Types("103\r24\r");
  foreman.Presses(Qt::Key_Escape, Qt::NoModifier);  // from the button to the less used boxes
  foreman.Types("box\r.85\r12\r70\r101\rnorth block\r");
  foreman.Types("103\r24\r\r107\r30.5\r\r");  // piecework: number, Enter, quantity, Enter, Enter
  foreman.Shows("piecework");
  foreman.At("3:30 pm");
  foreman.Presses(Qt::Key_O, Qt::AltModifier);
  foreman.Types("103\r\r107\r\r112\r\r");
  foreman.Shows("clocked-out");
  foreman.Presses(Qt::Key_W, Qt::ControlModifier);
  foreman.Presses(Qt::Key_E,
                  Qt::ControlModifier);  // in order of employees, with the hours worked out
  foreman.Shows("exported");
  foreman.Presses(Qt::Key_F,
                  Qt::AltModifier);  // over to the Options menu; its letter is Out's, too
  foreman.PressesInMenu({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Return});
  foreman.Shows("plain");
}

/// Whether the file that pays everybody is there; a copy of it and of the store goes to the results.
bool KeepResults(const QDir& results) {
  const QString import =
      QString::fromStdString(ostrel::RemoteDrive + "Pck-" + ostrel::ClientNumb + ".asc");
  const QString store = QString::fromStdString(ostrel::StorePath());
  for (const QString& file : {import, store}) {
    const QString kept = results.filePath(QFileInfo(file).fileName());
    QFile::remove(kept);
    if (!QFile::copy(file, kept)) {
      std::cerr << "not there: " << file.toStdString() << "\n";
      return false;
    }
  }
  return true;
}

/// The off-screen platform says of every window that it cannot raise it; there is nobody to tell.
void Say(QtMsgType /*type*/, const QMessageLogContext& /*place*/, const QString& text) {
  if (!text.startsWith("This plugin does not support"))
    std::cerr << text.toStdString() << std::endl;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: play_sample_day <application folder> <folder for the results>\n";
    return 2;
  }
  ostrel::QtProgram program(argc, argv);
  qInstallMessageHandler(Say);
  ostrel::SetExecutable(argv[1], "OstrelPayroll");
  ostrel::LoadScanMain();

  const QDir results(argv[2]);
  Album album(results);
  BoxPresser presser(album);
  ostrel::FormView& window = program.Open(ostrel::ScanMain);
  if (program.Edge().Ended() || !QTest::qWaitForWindowExposed(&window)) return 1;
  Foreman foreman(window, album);
  PlayDay(foreman);
  window.close();
  return KeepResults(results) ? 0 : 1;
}
