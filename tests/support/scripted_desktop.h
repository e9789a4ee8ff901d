#pragma once

// The Desktop of the tests: what the operator will answer is laid down beforehand, in order, and
// what was put before them is kept as readable lines. A box that nobody expected fails the test,
// and so does an answer that nobody asked for.

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/desktop.h"
#include "platform/values/value.h"
#include "support/recorded_print_job.h"

namespace ostrel {

class ScriptedDesktop : public Desktop {
 public:
  ScriptedDesktop();  ///< becomes TheDesktop()
  ~ScriptedDesktop() override;
  ScriptedDesktop(const ScriptedDesktop&) = delete;
  ScriptedDesktop& operator=(const ScriptedDesktop&) = delete;

  // The script. `meanwhile` runs while the box is up, before the answer is given.
  using Action = std::function<void()>;
  /// What an action shows, line by line as below: the answers behind the arrows are the operator's,
  /// and nothing else may be shown. "*" stands for anything.
  void Expect(const std::string& lines, const Action& action);
  void WillAnswer(BoxAnswer answer, Action meanwhile = {});
  void WillType(std::string text, Action meanwhile = {});  ///< "" is Cancel
  void WillPick(std::string path, Action meanwhile = {});  ///< "" is Cancel

  // What was shown, a line each, carriage returns as \r and line feeds as \n:
  //   [?] title | text | YesNoCancel -> Yes
  //   [i] title | text (detail) | Ok -> Ok
  //   [input] title | prompt | offered -> typed
  //   [open] title | folder | filter name (pattern) -> path
  //   [document] path
  //   beep, pointer 11, pointer 0 (only after RecordSignals)
  // Icons: [x] stop, [?] question, [!] exclamation, [i] information, [ ] none.
  const std::vector<std::string>& Shown() const { return shown_; }
  std::string TakeShown();  ///< the lines so far joined by line feeds; forgets them
  void RecordSignals(bool record = true) { recordSignals_ = record; }

  void RunPosted();  ///< also what the posted actions post themselves

  void SetTime(Moment now);          ///< from here on Now() stands still until told
  void PassSeconds(double seconds);  ///< after SetTime
  void SetCtrlKey(bool down) { ctrlKey_ = down; }
  void SetViewer(bool installed) { viewer_ = installed; }

  MousePointer Pointer() const { return pointer_; }
  int BeepCount() const { return beeps_; }
  RecordedPaper& Paper() { return paper_; }
  void OnEventPass(Action action) { onEventPass_ = std::move(action); }

  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override;
  std::string ShowInputBox(const std::string& prompt, const std::string& title,
                           const std::string& offered) override;
  std::string ShowOpenFile(const OpenFileRequest& request) override;
  bool ShowDocument(const std::string& path) override;
  void Beep() override;
  void SetPointer(MousePointer pointer) override;
  void EventPass() override {
    if (onEventPass_) onEventPass_();
  }
  void Post(std::function<void()> action) override { posted_.push_back(std::move(action)); }
  bool CtrlKey() override { return ctrlKey_; }
  std::string ClipboardText() override { return clipboard_; }
  void SetClipboardText(const std::string& text) override { clipboard_ = text; }
  std::unique_ptr<PrintJob> StartPrintJob(const PrintJobRequest& request) override {
    return std::make_unique<RecordedPrintJob>(paper_, request);
  }

 private:
  enum class Kind { MessageBox, InputBox, OpenFile };
  struct Step {
    Kind Of;
    std::string Answer;
    Action Meanwhile;
  };
  std::string AnswerTo(Kind kind, const std::string& box);

  std::deque<Step> script_;
  std::vector<std::string> shown_;
  std::deque<Action> posted_;
  Action onEventPass_;
  Moment now_;
  std::string clipboard_;
  RecordedPaper paper_;
  MousePointer pointer_ = MousePointer::Normal;
  int beeps_ = 0;
  bool recordSignals_ = false;
  bool ctrlKey_ = false;
  bool viewer_ = true;
};

}  // namespace ostrel
