#pragma once

// An operator whose hands a seed moves: keys, clicks and commands on the form, and answers to whatever
// boxes come. Each says what it names in the store before it acts.

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "battery/battery.h"
#include "battery/hands_harm.h"
#include "support/no_waiting.h"
#include "support/outside_store.h"
#include "support/payroll.h"

namespace ostrel {

/// What a step names, and so may change in the store.
struct Claim {
  std::map<std::int64_t, std::set<int>> Cells;  ///< fields of lines that are there, by row id
  std::set<std::int64_t> Goes;                  ///< lines that may be deleted
  std::set<int> NewEmployees, NewDays;          ///< of new lines
  std::string NewTypes;
  std::size_t NewLines = 0;    ///< at most
  std::set<int> HourDays;      ///< days whose hours and gross may be worked out
  bool TypedByClock = false;   ///< the line bears this very minute
  bool WithoutPieces = false;  ///< clock events carry no quantity

  void Add(const Claim& other);
};

/// The boxes put before the operator, answered by luck.
class LuckyDesktop : public ScriptedDesktop {
 public:
  explicit LuckyDesktop(ScriptedDesktop& posts) : posts_(posts) {}

  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override;
  std::string ShowInputBox(const std::string& prompt, const std::string& title,
                           const std::string& offered) override;
  std::string ShowOpenFile(const OpenFileRequest&) override { return {}; }
  bool ShowDocument(const std::string&) override { return true; }
  void SetPointer(MousePointer pointer) override { Pointer = pointer; }
  void Post(Action action) override { posts_.Post(std::move(action)); }

  Harm Luck;
  std::vector<std::string> Shown, Reports;
  MousePointer Pointer = MousePointer::Normal;
  std::string LastTyped;
  std::function<void()> OnReport;
  std::function<bool()> MayRetry;
  std::function<void(const std::string& text)> OnMessage;

 private:
  ScriptedDesktop& posts_;
  std::string asked_;
  int retries_ = 0;
};

/// The field that a column shows.
int FieldInGrid(int column);
/// The number that a text begins with; 0 where it begins with none.
double LeadingNumber(const std::string& text);

class Operator {
 public:
  Operator();

  /// Starts the program.
  ///   returns  whether it runs now
  bool Starts();
  std::function<void()> OnStarted;
  void BeginStep(unsigned luck, bool rude);
  /// Runs an event and what it posts.
  ///   returns  whether the program still runs
  bool Runs(const std::function<void()>& event);

  std::size_t Below(std::size_t bound) { return luck_.Below(bound); }
  bool Coin() { return luck_.Coin(); }
  template <class T>
  T OneOf(const std::vector<T>& all) {
    return all[Below(all.size())];
  }
  /// A key as the window hands it to the control with the focus; 0 for a key without a character.
  void Press(int keyCode, int character = 0);
  void Type(std::string_view keys);  ///< "\r" Enter, "\t" Tab, "\x1b" Esc, "\b" Backspace
  /// Types a text, or pastes it over what is there when it is a rude one.
  void Put(const std::string& text);
  void Choose(MenuItem& item);
  void ClaimSave();
  void ClaimNew(const std::set<int>& employees, const char* types, std::size_t lines);
  /// What the date box will hold once it is left; 0 for all days.
  int Day() const;
  int DayOfNewLine() const;
  void Note(const std::string& what) { Desktop.Shown.push_back("  " + what); }
  std::string StorePath() const { return Laptop.App("Prin1234.mdb"); }
  RawLines Lines() const;  ///< empty while the store is shut
  /// The cell in front of the operator will be written, if not now then when it is left.
  void ClaimCell();

  Payroll Laptop;
  LuckyDesktop Desktop{Laptop.Desktop};
  Claim Named;
  bool Commanded = false;  ///< the step gave a command that settles what is half typed
  bool Rude = false;       ///< texts are whatever hands can paste
  bool Harmed = false;     ///< a planted harm has struck in this step
  LuckyProbe Probe{Harmed};
  bool Meddled = false;  ///< another program has changed lines in this step

 private:
  void PressInBox(TextBox& box, int keyCode, int character);
  void PressInGrid(int keyCode, int character);

  NoWaiting noWaiting_;
  Harm luck_;
};

}  // namespace ostrel
