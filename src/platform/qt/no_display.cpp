#include "platform/qt/no_display.h"

#include <QString>
#include <cstdlib>
#include <iostream>

namespace ostrel {

namespace {

void EndOnFatal(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  if (type != QtFatalMsg) return;
  std::cerr << "Ostrel Payroll cannot show its window: there is no display that it can use.\n"
            << message.toStdString() << "\n";
  std::_Exit(1);
}

}  // namespace

NoDisplayReport::NoDisplayReport() { qInstallMessageHandler(EndOnFatal); }
NoDisplayReport::~NoDisplayReport() { qInstallMessageHandler(nullptr); }

}  // namespace ostrel
