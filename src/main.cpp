#include <QApplication>
#include <QIcon>
#include <QSessionManager>

#include <optional>

#include "platform/desktop/terminal.h"
#include "platform/qt/form_view.h"
#include "platform/qt/no_display.h"
#include "platform/qt/qt_desktop.h"
#include "program/command_line.h"
#include "program/event_table.h"
#include "scan_main/scan_main.h"

namespace {

// Says on the terminal what the command line asked for.
int Answer(const ostrel::CommandLine& command) {
  const bool refused = command.What == ostrel::CommandLine::Kind::Refuse;
  ostrel::SayOnTerminal(refused ? ostrel::Stream::Error : ostrel::Stream::Output, command.Text);
  return refused ? 2 : 0;
}

// What the desktop shows of the program beside its windows. The name is that of the entry in its
// menu. A session that comes back does not start the program again: it would forget the folder.
void Introduce(QApplication& application) {
  QGuiApplication::setDesktopFileName("com.orveth.OstrelPayroll");
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    icon.addFile(QString(":/icon/ostrel-payroll-%1.png").arg(size), QSize(size, size));
  }
  QApplication::setWindowIcon(icon);
#ifndef QT_NO_SESSIONMANAGER
  QObject::connect(
      &application, &QGuiApplication::saveStateRequest, &application,
      [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); },
      Qt::DirectConnection);
#else
  (void)application;
#endif
}

}  // namespace

int main(int argc, char** argv) {
  const ostrel::CommandLine command = ostrel::ReadCommandLine(ostrel::StartWords(argc, argv));
  if (command.What != ostrel::CommandLine::Kind::Work) return Answer(command);

  QApplication::setStyle("Fusion");
  std::optional<ostrel::NoDisplayReport> noDisplay(std::in_place);
  int programAlone = 1;  // the words are read; the toolkit has none of its own here
  QApplication application(programAlone, argv);
  noDisplay.reset();
  Introduce(application);
  ostrel::EventEdge edge;
  ostrel::QtDesktop desktop(edge);
  ostrel::SetDesktop(&desktop);
  if (const std::string trouble = ostrel::UseFolder(command); !trouble.empty()) {
    ostrel::SayOnTerminal(ostrel::Stream::Error, "OstrelPayroll: " + trouble + "\n");
    ostrel::MsgBox(trouble, ostrel::BoxButtons::Ok, ostrel::BoxIcon::Stop);
    return 1;
  }

  ostrel::LoadScanMain();
  ostrel::FormView window(ostrel::ScanMain, edge);
  QApplication::setFont(window.TextFont());
  edge.Run([] {
    ostrel::ScanMain.Raise(ostrel::ScanMain.Load);  // a failure of it does not keep the form away
    ostrel::ScanMain.Show();
  });
  return edge.Ended() ? 0 : QApplication::exec();
}
