#pragma once

// The program with a desktop that prints for real, for tests that read the pages back.

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <string>

#include "frame/app_state.h"
#include "platform/qt/qt_printing.h"
#include "platform/qt/qt_text.h"
#include "support/payroll.h"
#include "window/qt_application.h"

namespace ostrel {

/// What a command writes, the empty text when it fails.
inline std::string OutputOf(const char* program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  const bool well = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
                    process.exitCode() == 0;
  return well ? process.readAllStandardOutput().toStdString() : "";
}

/// Wherever it is: the printing system's programs lie in folders that only root has in its path.
inline QString FindProgram(const char* name) {
  const QString found = QStandardPaths::findExecutable(name);
  return found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin"}) : found;
}

class PrintingDesktop : public ScriptedDesktop {
 public:
  std::unique_ptr<PrintJob> StartPrintJob(const PrintJobRequest& request) override {
    return StartQtPrintJob(request);
  }
};

class PaperOffice : public testing::Test {
 protected:
  static void SetUpTestSuite() { TheApplication(); }

  /// No test prints on the developer's printer: the queues are those behind `socket`, if any.
  void Start(const std::string& socket) {
    qputenv("CUPS_SERVER", socket.c_str());
    qputenv("HOME", Office.App().c_str());
    Office.Start();
    txtComments.Text = "Crew#2";
  }

  void AddLines(int count) {
    std::string lines;
    for (int i = 1; i <= count; ++i) lines += std::to_string(i) + " P 8:00 am 10 0.5|";
    Office.AddLine(lines);
  }

  /// Chooses Print Displayed Lines and answers the closing message.
  void Print() {
    Desktop.WillAnswer(BoxAnswer::Ok);
    Office.Choose(mnuPrintLines);
  }

  Payroll Office;
  PrintingDesktop Desktop;
};

}  // namespace ostrel
