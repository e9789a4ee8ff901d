#include <QApplication>

#include <optional>

#include "platform/qt/form_view.h"
#include "platform/qt/no_display.h"
#include "platform/qt/qt_desktop.h"
#include "program/event_table.h"
#include "program/start_up.h"
#include "scan_main/scan_main.h"

int main(int argc, char** argv) {
  QApplication::setStyle("Fusion");
  std::optional<ostrel::NoDisplayReport> noDisplay(std::in_place);
  const QApplication application(argc, argv);
  noDisplay.reset();
  ostrel::EventEdge edge;
  ostrel::QtDesktop desktop(edge);
  ostrel::SetDesktop(&desktop);

  ostrel::LoadScanMain();
  ostrel::FormView window(ostrel::ScanMain, edge);
  QApplication::setFont(window.TextFont());
  edge.Run([] {
    ostrel::ScanMain.Raise(ostrel::ScanMain.Load);  // a failure of it does not keep the form away
    ostrel::ScanMain.Show();
  });
  const int code = edge.Ended() ? 0 : QApplication::exec();
  ostrel::CloseAll();
  return code;
}
