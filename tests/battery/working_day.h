#pragma once

// A foreman's day, one command after the other, as the rows that harm the disk play it: always the
// same lines at the same clock, so that every run can be compared with the undisturbed one.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/payroll.h"

namespace ostrel {

/// Agrees to everything; what is to be done about a report, the row says.
class Operator : public ScriptedDesktop {
 public:
  explicit Operator(ScriptedDesktop& hands) : hands_(hands) {}
  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override;
  std::string ShowInputBox(const std::string&, const std::string& title,
                           const std::string& offered) override;
  void Post(std::function<void()> action) override { hands_.Post(std::move(action)); }

  std::function<BoxAnswer(const std::string& text)> OnReport;  ///< none: a report fails the test
  std::function<BoxAnswer()> OnDiskNotReady;
  std::function<void(const std::string& text)> OnSaid;
  std::vector<std::string> Reports;
  std::string Said;  ///< the boxes that only say something, one behind the other

 private:
  ScriptedDesktop& hands_;
};

using Contents = std::map<std::string, std::string>;  ///< by path in the folder; folders end in /

Contents ReadContents(const std::string& folder);
void WriteContents(const std::string& folder, const Contents& contents);

class WorkingDay;

struct DayStep {
  const char* Name;
  void (*Run)(WorkingDay&);
  const char* Done;  ///< what the operator is told when it is done; "" nothing
};

class WorkingDay {
 public:
  WorkingDay();

  /// The laptop as it was this morning, the program not running.
  void Reset() { Reset(morning_); }
  void Reset(const Contents& contents);
  void Kill();  ///< the program, as it stands

  /// All commands in turn. `acknowledged` is called whenever the operator may believe something to
  /// be written: a save has returned, a box has said so, the program has ended.
  void Run(const std::function<void()>& acknowledged = {});
  void RunCommand(std::size_t command);

  /// The store's answer to plain SQL, a text "a,b," for each row, or its error.
  std::vector<std::string> Ask(const char* question) const;
  std::vector<std::string> Lines() const;  ///< all, in order of entry
  Contents Files() const;                  ///< all but the store and the log

  Payroll Laptop;
  Operator Hands;

 private:
  friend struct Steps;
  void Acknowledge() const {
    if (acknowledged_) acknowledged_();
  }
  Contents morning_;
  std::function<void()> acknowledged_;
};

extern const std::vector<DayStep> kDay;

/// What the undisturbed day leaves at each acknowledgement, and what may be found after harm.
class DayRecord {
 public:
  explicit DayRecord(WorkingDay& day);

  std::size_t Acknowledgements() const { return lines_.size(); }
  /// Starts the program on what the harm has left.
  ///   acknowledged  how many acknowledgements the operator has had
  ///   returns       what is lost, damaged or mixed; "" nothing
  std::string DamageAfter(WorkingDay& day, std::size_t acknowledged) const;
  /// The same after the program has come to a sudden end, but for the lines.
  std::string FilesAfterRestart(WorkingDay& day) const;

 private:
  static std::string FaultOfStart(WorkingDay& day);
  std::string LostLines(const WorkingDay& day, std::size_t acknowledged) const;
  std::string WrongFiles(const WorkingDay& day, std::size_t acknowledged) const;

  std::vector<std::vector<std::string>> lines_;         // at each acknowledgement
  std::vector<std::map<std::string, std::size_t>> at_;  // version of each file then
  std::map<std::string, std::vector<std::string>> versions_;
};

}  // namespace ostrel
