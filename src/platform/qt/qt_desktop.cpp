#include "platform/qt/qt_desktop.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QUrl>

#include "platform/qt/boxes.h"
#include "platform/qt/qt_printing.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

BoxAnswer QtDesktop::ShowMessageBox(const MessageBoxRequest& request) {
  return RunMessageBox(request);
}

std::string QtDesktop::ShowInputBox(const std::string& prompt, const std::string& title,
                                    const std::string& offered) {
  return RunInputBox(prompt, title, offered);
}

std::string QtDesktop::ShowOpenFile(const OpenFileRequest& request) { return RunOpenFile(request); }

bool QtDesktop::ShowDocument(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)));
}

void QtDesktop::Beep() { QApplication::beep(); }

void QtDesktop::SetPointer(MousePointer pointer) {
  const bool wait = pointer == MousePointer::Wait;
  // The toolkit stacks its pointers; one too many would stay for the rest of the run.
  if (wait == waiting_) return;
  waiting_ = wait;
  if (wait) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

/// Keys and clicks stay in the queue, in their order, until the running event is over.
void QtDesktop::EventPass() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void QtDesktop::Post(std::function<void()> action) { edge_.Post(std::move(action)); }

bool QtDesktop::CtrlKey() {
  return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ControlModifier);
}

std::string QtDesktop::ClipboardText() { return FromQt(QGuiApplication::clipboard()->text()); }

void QtDesktop::SetClipboardText(const std::string& text) {
  QGuiApplication::clipboard()->setText(ToQt(text));
}

std::unique_ptr<PrintJob> QtDesktop::StartPrintJob(const PrintJobRequest& request) {
  return StartQtPrintJob(request);
}

}  // namespace ostrel
