#include "support/scripted_desktop.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/values/clock.h"

namespace ostrel {

namespace {

constexpr double kSecondsPerDay = 86400;

std::string Visible(const std::string& text) {
  std::string visible;
  for (char c : text) {
    if (c == '\r') {
      visible += "\\r";
    } else if (c == '\n') {
      visible += "\\n";
    } else {
      visible += c;
    }
  }
  return visible;
}

std::string NameOf(BoxAnswer answer) {
  static const char* const names[] = {"", "Ok", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No"};
  return names[static_cast<int>(answer)];
}

const char* NameOf(BoxIcon icon) {
  static const char* const names[] = {"[ ]", "[x]", "[?]", "[!]", "[i]"};
  return names[static_cast<int>(icon)];
}

struct ButtonSet {
  const char* Name;
  std::vector<BoxAnswer> Answers;  // the last is what an unexpected box gets
};

const ButtonSet& SetOf(BoxButtons buttons) {
  using enum BoxAnswer;
  static const ButtonSet sets[] = {{"Ok", {Ok}},
                                   {"OkCancel", {Ok, Cancel}},
                                   {"AbortRetryIgnore", {Abort, Retry, Ignore}},
                                   {"YesNoCancel", {Yes, No, Cancel}},
                                   {"YesNo", {Yes, No}}};
  return sets[static_cast<int>(buttons)];
}

}  // namespace

ScriptedDesktop::ScriptedDesktop() { SetDesktop(this); }

ScriptedDesktop::~ScriptedDesktop() {
  for (const Step& step : script_) {
    ADD_FAILURE() << "an answer that nobody asked for: "
                  << (step.Of == Kind::MessageBox ? NameOf(step.Answer) : step.Text);
  }
  SetDesktop(nullptr);
  SetClock({});
}

void ScriptedDesktop::WillAnswer(BoxAnswer answer, Action meanwhile) {
  script_.push_back({Kind::MessageBox, answer, "", std::move(meanwhile)});
}

void ScriptedDesktop::WillType(std::string text, Action meanwhile) {
  script_.push_back({Kind::InputBox, BoxAnswer::Ok, std::move(text), std::move(meanwhile)});
}

void ScriptedDesktop::WillPick(std::string path, Action meanwhile) {
  script_.push_back({Kind::OpenFile, BoxAnswer::Ok, std::move(path), std::move(meanwhile)});
}

ScriptedDesktop::Step ScriptedDesktop::NextStep(Kind kind, const std::string& shown,
                                                BoxAnswer unexpected) {
  if (script_.empty() || script_.front().Of != kind) {
    ADD_FAILURE() << "a box that nobody expected: " << shown;
    return {kind, unexpected, "", {}};
  }
  Step step = std::move(script_.front());
  script_.pop_front();
  if (step.Meanwhile) step.Meanwhile();
  return step;
}

BoxAnswer ScriptedDesktop::ShowMessageBox(const MessageBoxRequest& request) {
  const ButtonSet& set = SetOf(request.Buttons);
  std::string line = std::string(NameOf(request.Icon)) + " " + Visible(request.Title) + " | " +
                     Visible(request.Text);
  if (!request.Detail.empty()) line += " (" + Visible(request.Detail) + ")";
  line += std::string(" | ") + set.Name;
  BoxAnswer answer = NextStep(Kind::MessageBox, line, set.Answers.back()).Answer;
  if (std::find(set.Answers.begin(), set.Answers.end(), answer) == set.Answers.end()) {
    ADD_FAILURE() << NameOf(answer) << " is no button of " << line;
    answer = set.Answers.back();
  }
  shown_.push_back(line + " -> " + NameOf(answer));
  return answer;
}

std::string ScriptedDesktop::ShowInputBox(const std::string& prompt, const std::string& title,
                                          const std::string& offered) {
  const std::string line =
      "[input] " + Visible(title) + " | " + Visible(prompt) + " | " + Visible(offered);
  std::string typed = NextStep(Kind::InputBox, line, BoxAnswer::Cancel).Text;
  shown_.push_back(line + " -> " + Visible(typed));
  return typed;
}

std::string ScriptedDesktop::ShowOpenFile(const OpenFileRequest& request) {
  const std::string line = "[open] " + Visible(request.Title) + " | " + request.Folder + " | " +
                           request.FilterName + " (" + request.FilterPattern + ")";
  std::string path = NextStep(Kind::OpenFile, line, BoxAnswer::Cancel).Text;
  shown_.push_back(line + " -> " + path);
  return path;
}

bool ScriptedDesktop::ShowDocument(const std::string& path) {
  shown_.push_back("[document] " + path);
  return viewer_;
}

std::string ScriptedDesktop::TakeShown() {
  std::string joined;
  for (const std::string& line : shown_) {
    if (!joined.empty()) joined += '\n';
    joined += line;
  }
  shown_.clear();
  return joined;
}

void ScriptedDesktop::RunPosted() {
  while (!posted_.empty()) {
    const Action action = std::move(posted_.front());
    posted_.pop_front();
    action();
  }
}

void ScriptedDesktop::SetTime(Moment now) {
  now_ = now;
  SetClock([this] { return now_; });
}

void ScriptedDesktop::PassSeconds(double seconds) { now_.Days += seconds / kSecondsPerDay; }

void ScriptedDesktop::Beep() {
  ++beeps_;
  if (recordSignals_) shown_.emplace_back("beep");
}

void ScriptedDesktop::SetPointer(MousePointer pointer) {
  pointer_ = pointer;
  if (recordSignals_) shown_.push_back("pointer " + std::to_string(static_cast<int>(pointer)));
}

void ScriptedDesktop::EventPass() {
  ++eventPasses_;
  if (onEventPass_) onEventPass_();
}

}  // namespace ostrel
