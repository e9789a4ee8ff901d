#pragma once

// The one application object of the window tests, drawn off screen unless told otherwise.

#include <QApplication>

namespace ostrel {

inline QApplication& TheApplication() {
  static int count = 1;
  static char name[] = "ostrel_window_tests";
  static char* arguments[] = {name, nullptr};
  static QApplication* application = [] {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle("Fusion");
    return new QApplication(count, arguments);
  }();
  return *application;
}

}  // namespace ostrel
