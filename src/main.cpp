#include <QApplication>

#include "entry/scan_main.h"
#include "platform/qt/form_view.h"
#include "platform/qt/qt_desktop.h"

int main(int argc, char** argv) {
  QApplication::setStyle("Fusion");
  const QApplication application(argc, argv);
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
  return edge.Ended() ? 0 : QApplication::exec();
}
