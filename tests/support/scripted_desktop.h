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

#include "platform/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/value.h"
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
  //   beep, pointer 11, pointer 0 (only after RecordSignals)
  // Icons: [x] stop, [?] question, [!] exclamation, [i] information, [ ] none.
  const std::vector<std::string>& Shown() const { return shown_; }
  /// The lines so far joined by line feeds; forgets them.
  std::string TakeShown() {
    std::string joined;
    for (const std::string& line : shown_) joined += (joined.empty() ? "" : "\n") + line;
    shown_.clear();
    return joined;
  }
  void RecordSignals() { recordSignals_ = true; }

  /// Everything that an action shows: the answers behind the arrows are the operator's. "*" stands
  /// for anything. Behind it the pointer is the usual one again.
  void Expect(const std::string& lines, const Action& action) {
    std::istringstream script(lines);
    for (std::string line; std::getline(script, line);) {
      const std::size_t arrow = line.rfind("-> ");
      if (arrow == std::string::npos) continue;
      const Kind kind = line.starts_with("[input]") ? Kind::InputBox : Kind::MessageBox;
      script_.push_back({kind, line.substr(arrow + 3), {}});
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
    script_.push_back({Kind::MessageBox, NameOf(answer), std::move(meanwhile)});
  }
  void WillType(std::string text, Action meanwhile = {}) {  ///< "" is Cancel
    script_.push_back({Kind::InputBox, std::move(text), std::move(meanwhile)});
  }
  void WillPick(std::string path, Action meanwhile = {}) {  ///< "" is Cancel
    script_.push_back({Kind::OpenFile, std::move(path), std::move(meanwhile)});
  }

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
  bool HoldsCtrl = false;
  bool HasViewer = true;
  std::function<void(Action)> PostTo;  ///< set where a window runs what is posted

  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override {
    static const char* const icons[] = {"[ ] ", "[x] ", "[?] ", "[!] ", "[i] "};
    const ButtonSet& set = SetOf(request.Buttons);
    std::string line = icons[static_cast<int>(request.Icon)] + Visible(request.Title) + " | " +
                       Visible(request.Text);
    if (!request.Detail.empty()) line += " (" + Visible(request.Detail) + ")";
    line += " | " + set.Name;
    const std::string wanted = AnswerTo(Kind::MessageBox, line);
    const auto answer = std::find_if(set.Answers.begin(), set.Answers.end() - 1,
                                     [&](BoxAnswer button) { return NameOf(button) == wanted; });
    const bool has = wanted.empty() || wanted == NameOf(*answer);
    EXPECT_TRUE(has) << wanted << " is no button of " << line;
    shown_.push_back(line + " -> " + NameOf(*answer));
    return *answer;
  }
  std::string ShowInputBox(const std::string& prompt, const std::string& title,
                           const std::string& offered) override {
    return Ask(Kind::InputBox,
               "[input] " + Visible(title) + " | " + Visible(prompt) + " | " + Visible(offered));
  }
  std::string ShowOpenFile(const OpenFileRequest& request) override {
    return Ask(Kind::OpenFile, "[open] " + Visible(request.Title) + " | " + request.Folder + " | " +
                                   request.FilterName + " (" + request.FilterPattern + ")");
  }
  bool ShowDocument(const std::string& path) override {
    shown_.push_back("[document] " + path);
    return HasViewer;
  }
  void Beep() override {
    if (recordSignals_) shown_.emplace_back("beep");
  }
  void SetPointer(MousePointer pointer) override {
    pointer_ = pointer;
    if (recordSignals_) shown_.push_back("pointer " + std::to_string(static_cast<int>(pointer)));
  }
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
  enum class Kind { MessageBox, InputBox, OpenFile };
  struct Step {
    Kind Of;
    std::string Answer;
    Action Meanwhile;
  };
  struct ButtonSet {
    std::string Name;
    std::vector<BoxAnswer> Answers;  // the last is what an unexpected box gets
  };

  static const ButtonSet& SetOf(BoxButtons buttons) {
    using enum BoxAnswer;
    static const ButtonSet sets[] = {{"Ok", {Ok}},
                                     {"OkCancel", {Ok, Cancel}},
                                     {"AbortRetryIgnore", {Abort, Retry, Ignore}},
                                     {"YesNoCancel", {Yes, No, Cancel}},
                                     {"YesNo", {Yes, No}}};
    return sets[static_cast<int>(buttons)];
  }
  static std::string NameOf(BoxAnswer answer) {
    static const char* const names[] = {"",      "Ok",     "Cancel", "Abort",
                                        "Retry", "Ignore", "Yes",    "No"};
    return names[static_cast<int>(answer)];
  }
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
  std::string AnswerTo(Kind kind, const std::string& box) {
    if (script_.empty() || script_.front().Of != kind) {
      ADD_FAILURE() << "a box that nobody expected: " << box;
      return {};
    }
    const Step step = std::move(script_.front());
    script_.pop_front();
    if (step.Meanwhile) step.Meanwhile();
    return step.Answer;
  }
  std::string Ask(Kind kind, const std::string& box) {
    std::string answer = AnswerTo(kind, box);
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
  bool recordSignals_ = false;
};

}  // namespace ostrel
