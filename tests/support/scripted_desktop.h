#pragma once

// The Desktop of the tests: what the operator will answer is laid down beforehand, in order, and
// what was put before them is kept as readable lines. A box that nobody expected fails the test,
// and so does an answer that nobody asked for.

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "support/recorded_print_job.h"

namespace ostrel {

class ScriptedDesktop : public Desktop {
 public:
  using Action = std::function<void()>;

  ScriptedDesktop() { SetDesktop(this); }
  ~ScriptedDesktop() override {
    for (const Step& step : script_) {
      ADD_FAILURE() << "an answer that nobody asked for: " << step.Answer;
    }
    SetDesktop(nullptr);
    SetClock({});
  }

  // What was shown, a line each, carriage returns as \r and line feeds as \n:
  //   [?] title | text | YesNoCancel -> Yes
  //   [i] title | text (detail) | Ok -> Ok
  //   [input] title | prompt | offered -> typed
  //   [open] title | folder | filter name (pattern) -> path
  //   [document] path
  // Icons: [x] stop, [?] question, [!] exclamation, [i] information, [ ] none.
  const std::vector<std::string>& Shown() const { return shown_; }
  /// The lines so far joined by line feeds; forgets them.
  std::string TakeShown() {
    std::string joined;
    for (const std::string& line : shown_) joined += (joined.empty() ? "" : "\n") + line;
    shown_.clear();
    return joined;
  }

  /// Everything that an action shows: the answers behind the arrows are the operator's. "*" stands
  /// for anything. Behind it the pointer is the usual one again.
  void Expect(const std::string& lines, const Action& action) {
    std::istringstream script(lines);
    for (std::string line; std::getline(script, line);) {
      const std::size_t arrow = line.rfind("-> ");
      if (arrow != std::string::npos) script_.push_back({line.substr(arrow + 3), {}});
    }
    action();
    const std::string shown = TakeShown();
    EXPECT_TRUE(IsLike(shown, lines)) << shown << "\ninstead of\n" << lines;
    EXPECT_TRUE(script_.empty()) << "not all was asked of\n" << lines;
    EXPECT_EQ(pointer_, MousePointer::Normal);
    script_.clear();
  }
  // Single answers. `meanwhile` runs while the box is up, before the answer is given.
  void WillAnswer(BoxAnswer answer, Action meanwhile = {}) {
    script_.push_back({kButtons[static_cast<int>(answer)], std::move(meanwhile)});
  }
  void WillType(std::string text, Action meanwhile = {}) {  ///< "" is Cancel
    script_.push_back({std::move(text), std::move(meanwhile)});
  }
  void WillPick(std::string path) { script_.push_back({std::move(path), {}}); }  ///< "" is Cancel

  /// Also what the posted actions post themselves.
  void RunPosted() {
    while (!posted_.empty()) {
      const Action action = std::move(posted_.front());
      posted_.pop_front();
      action();
    }
  }

  /// From here on Now() stands still until told.
  void SetTime(Moment now) {
    now_ = now;
    SetClock([this] { return now_; });
  }
  void PassSeconds(double seconds) { now_.Days += seconds / 86400; }  ///< after SetTime
  void OnEventPass(Action action) { onEventPass_ = std::move(action); }

  RecordedPaper& Paper() { return paper_; }
  int Beeps = 0;
  bool HoldsCtrl = false;
  bool HasViewer = true;
  std::function<void(Action)> PostTo;  ///< set where a window runs what is posted

  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override {
    static const char* const icons[] = {"[ ] ", "[x] ", "[?] ", "[!] ", "[i] "};
    static const std::string sets[] = {"Ok", "OkCancel", "AbortRetryIgnore", "YesNoCancel",
                                       "YesNo"};
    const std::string& set = sets[static_cast<int>(request.Buttons)];
    std::string line = icons[static_cast<int>(request.Icon)] + Visible(request.Title) + " | " +
                       Visible(request.Text);
    if (!request.Detail.empty()) line += " (" + Visible(request.Detail) + ")";
    line += " | " + set;
    const std::string wanted = AnswerTo(line);
    const auto *first = std::begin(kButtons) + 1, *end = std::end(kButtons);
    const auto* button = std::find(first, end, wanted);
    if (button == end || set.find(wanted) == set.npos) {
      EXPECT_EQ(wanted, "") << "is no button of " << line;
      button = std::find_if(first, end, [&](const char* name) { return set.ends_with(name); });
    }
    shown_.push_back(line + " -> " + *button);
    return static_cast<BoxAnswer>(button - kButtons);
  }
  std::string ShowInputBox(const std::string& prompt, const std::string& title,
                           const std::string& offered) override {
    return Ask("[input] " + Visible(title) + " | " + Visible(prompt) + " | " + Visible(offered));
  }
  std::string ShowOpenFile(const OpenFileRequest& request) override {
    return Ask("[open] " + Visible(request.Title) + " | " + request.Folder + " | " +
               request.FilterName + " (" + request.FilterPattern + ")");
  }
  bool ShowDocument(const std::string& path) override {
    shown_.push_back("[document] " + path);
    return HasViewer;
  }
  void Beep() override { ++Beeps; }
  void SetPointer(MousePointer pointer) override { pointer_ = pointer; }
  void EventPass() override {
    if (onEventPass_) onEventPass_();
  }
  void Post(Action action) override {
    PostTo ? PostTo(std::move(action)) : posted_.push_back(std::move(action));
  }
  bool CtrlKey() override { return HoldsCtrl; }
  std::string ClipboardText() override { return clipboard_; }
  void SetClipboardText(const std::string& text) override { clipboard_ = text; }
  std::unique_ptr<PrintJob> StartPrintJob(const PrintJobRequest& request) override {
    return std::make_unique<RecordedPrintJob>(paper_, request);
  }

 private:
  struct Step {
    std::string Answer;
    Action Meanwhile;
  };

  /// As BoxAnswer has them.
  static constexpr const char* kButtons[] = {"",      "Ok",     "Cancel", "Abort",
                                             "Retry", "Ignore", "Yes",    "No"};

  static std::string Visible(const std::string& text) {
    std::string visible;
    for (const char c : text) visible += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
    return visible;
  }
  static bool IsLike(std::string_view text, std::string_view pattern) {
    if (pattern.empty()) return text.empty();
    const bool any = pattern[0] == '*';
    if (any && IsLike(text, pattern.substr(1))) return true;
    if (text.empty() || (!any && pattern[0] != text[0])) return false;
    return IsLike(text.substr(1), any ? pattern : pattern.substr(1));
  }

  /// The answer that the script has next; the empty text for a box that it does not have.
  std::string AnswerTo(const std::string& box) {
    if (script_.empty()) {
      ADD_FAILURE() << "a box that nobody expected: " << box;
      return {};
    }
    const Step step = std::move(script_.front());
    script_.pop_front();
    if (step.Meanwhile) step.Meanwhile();
    return step.Answer;
  }
  std::string Ask(const std::string& box) {
    std::string answer = AnswerTo(box);
    shown_.push_back(box + " -> " + Visible(answer));
    return answer;
  }

  std::deque<Step> script_;
  std::vector<std::string> shown_;
  std::deque<Action> posted_;
  Action onEventPass_;
  Moment now_;
  std::string clipboard_;
  RecordedPaper paper_;
  MousePointer pointer_ = MousePointer::Normal;
};

}  // namespace ostrel
