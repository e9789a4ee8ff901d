#pragma once

// The desktop of a real screen.

#include "platform/desktop/desktop.h"
#include "platform/qt/event_edge.h"

namespace ostrel {

class QtDesktop : public Desktop {
 public:
  /// What routines post goes to `edge`, which runs the events.
  explicit QtDesktop(EventEdge& edge) : edge_(edge) {}

  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override;
  std::string ShowInputBox(const std::string& prompt, const std::string& title,
                           const std::string& offered) override;
  std::string ShowOpenFile(const OpenFileRequest& request) override;
  bool ShowDocument(const std::string& path) override;
  void Beep() override;
  void SetPointer(MousePointer pointer) override;
  void EventPass() override;
  void Post(std::function<void()> action) override;
  bool CtrlKey() override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;
  std::unique_ptr<PrintJob> StartPrintJob(const PrintJobRequest& request) override;

 private:
  EventEdge& edge_;
  bool waiting_ = false;  // the wait pointer is on
};

}  // namespace ostrel
