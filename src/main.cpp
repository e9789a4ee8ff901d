#include <QApplication>
#include <QIcon>
#include <QSessionManager>

#include "platform/desktop/terminal.h"
#include "platform/qt/qt_program.h"
#include "program/command_line.h"
#include "program/event_table.h"
#include "program/start_up.h"
#include "scan_main/scan_main.h"

namespace {

// Says on the terminal what the command line asked for.
int Answer(const ostrel::CommandLine& command) {
  const bool refused = command.What == ostrel::CommandLine::Kind::Refuse;
  ostrel::SayOnTerminal(refused ? ostrel::Stream::Error : ostrel::Stream::Output, command.Text);
  return refused ? 2 : 0;
}

int Refuse(const std::string& trouble) {
  ostrel::SayOnTerminal(ostrel::Stream::Error, "OstrelPayroll: " + trouble + "\n");
  ostrel::MsgBox(trouble, ostrel::BoxButtons::Ok, ostrel::BoxIcon::Stop);
  return 1;
}

#ifndef QT_NO_SESSIONMANAGER
// A session that comes back does not start the program again: it would forget the folder.
void StayAwayFromSessions() {
  QObject::connect(
      qApp, &QGuiApplication::saveStateRequest, qApp,
      [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); },
      Qt::DirectConnection);
}
#else
void StayAwayFromSessions() {}
#endif

// What the desktop shows of the program beside its windows. The name is that of the entry in its
// menu.
void ShowIdentity() {
  QGuiApplication::setDesktopFileName("com.orveth.OstrelPayroll");
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    icon.addFile(QString(":/icon/ostrel-payroll-%1.png").arg(size), QSize(size, size));
  }
  QApplication::setWindowIcon(icon);
}

}  // namespace

int main(int argc, char** argv) {
  const ostrel::CommandLine command = ostrel::ReadCommandLine(ostrel::StartWords(argc, argv));
  if (command.What != ostrel::CommandLine::Kind::Work) return Answer(command);

  int wordsLeft = 1;  // all others are read; the toolkit has no options here
  ostrel::QtProgram program(wordsLeft, argv);
  ShowIdentity();
  StayAwayFromSessions();
  const std::string trouble = ostrel::UseFolder(command);
  if (!trouble.empty()) return Refuse(trouble);

  ostrel::LoadScanMain();
  program.Open(ostrel::ScanMain);
  const int code = program.Run();
  ostrel::CloseAll();
  return code;
}
