#include "support/scripted_desktop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "platform/values/clock.h"

namespace ostrel {

namespace {

constexpr double kSecondsPerDay = 86400;

std::string Visible(const std::string& text) {
  std::string visible;
  for (const char c : text) visible += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
  return visible;
}

const std::string kAnswers[] = {"", "Ok", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No"};
const std::string kIcons[] = {"[ ] ", "[x] ", "[?] ", "[!] ", "[i] "};

struct ButtonSet {
  std::string Name;
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

bool IsLike(std::string_view text, std::string_view pattern) {
  if (pattern.empty()) return text.empty();
  if (pattern[0] == '*' && IsLike(text, pattern.substr(1))) return true;
  if (text.empty() || (pattern[0] != '*' && pattern[0] != text[0])) return false;
  return IsLike(text.substr(1), pattern[0] == '*' ? pattern : pattern.substr(1));
}

}  // namespace

ScriptedDesktop::ScriptedDesktop() { SetDesktop(this); }

ScriptedDesktop::~ScriptedDesktop() {
  for (const Step& step : script_) {
    ADD_FAILURE() << "an answer that nobody asked for: " << step.Answer;
  }
  SetDesktop(nullptr);
  SetClock({});
}

void ScriptedDesktop::WillAnswer(BoxAnswer answer, Action meanwhile) {
  script_.push_back({Kind::MessageBox, kAnswers[static_cast<int>(answer)], std::move(meanwhile)});
}

void ScriptedDesktop::WillType(std::string text, Action meanwhile) {
  script_.push_back({Kind::InputBox, std::move(text), std::move(meanwhile)});
}

void ScriptedDesktop::WillPick(std::string path, Action meanwhile) {
  script_.push_back({Kind::OpenFile, std::move(path), std::move(meanwhile)});
}

void ScriptedDesktop::Expect(const std::string& lines, const Action& action) {
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
  script_.clear();
}

/// The answer that the script has next; the empty text for a box that it does not have.
std::string ScriptedDesktop::AnswerTo(Kind kind, const std::string& box) {
  if (script_.empty() || script_.front().Of != kind) {
    ADD_FAILURE() << "a box that nobody expected: " << box;
    return {};
  }
  const Step step = std::move(script_.front());
  script_.pop_front();
  if (step.Meanwhile) step.Meanwhile();
  return step.Answer;
}

BoxAnswer ScriptedDesktop::ShowMessageBox(const MessageBoxRequest& request) {
  const ButtonSet& set = SetOf(request.Buttons);
  std::string line = kIcons[static_cast<int>(request.Icon)] + Visible(request.Title) + " | " +
                     Visible(request.Text);
  if (!request.Detail.empty()) line += " (" + Visible(request.Detail) + ")";
  line += " | " + set.Name;
  const std::string wanted = AnswerTo(Kind::MessageBox, line);
  auto answer = set.Answers.end() - 1;
  if (!wanted.empty()) {
    answer = std::find_if(set.Answers.begin(), answer, [&](BoxAnswer button) {
      return kAnswers[static_cast<int>(button)] == wanted;
    });
    const std::string& found = kAnswers[static_cast<int>(*answer)];
    EXPECT_EQ(found, wanted) << wanted << " is no button of " << line;
  }
  shown_.push_back(line + " -> " + kAnswers[static_cast<int>(*answer)]);
  return *answer;
}

std::string ScriptedDesktop::ShowInputBox(const std::string& prompt, const std::string& title,
                                          const std::string& offered) {
  const std::string line =
      "[input] " + Visible(title) + " | " + Visible(prompt) + " | " + Visible(offered);
  std::string typed = AnswerTo(Kind::InputBox, line);
  shown_.push_back(line + " -> " + Visible(typed));
  return typed;
}

std::string ScriptedDesktop::ShowOpenFile(const OpenFileRequest& request) {
  const std::string line = "[open] " + Visible(request.Title) + " | " + request.Folder + " | " +
                           request.FilterName + " (" + request.FilterPattern + ")";
  std::string path = AnswerTo(Kind::OpenFile, line);
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

}  // namespace ostrel
