#pragma once

// A foreman's day, one command after the other, as the rows that harm the disk play it: always the
// same lines at the same clock, so that every run can be compared with the undisturbed one.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/agreeing_desktop.h"
#include "support/ask_sqlite.h"
#include "support/payroll.h"
#include "support/zip_builder.h"

namespace ostrel {

using Contents = std::map<std::string, std::string>;  ///< by path in the folder; folders end in /

Contents ReadContents(const std::string& folder);

inline const char* const kTableFiles[] = {"Hvcl1234.dbf", "Prms1234.dbf", "Glen1234.dbf",
                                          "Glod1234.dbf", "Gleq1234.dbf"};
/// The table with its last row once more.
std::string OneRowMore(std::string table);
/// The table with pay of the year where it has none.
std::string WithYearPay(std::string table);
/// The laptop's tables as the office sends them, each with one row more and with pay.
ZipBuilder NextWeeksZip(const Payroll& laptop);

class WorkingDay {
 public:
  WorkingDay();

  /// The laptop as it was this morning, the program not running.
  void Reset() { Reset(morning_); }
  void Reset(const Contents& contents);
  void Kill();  ///< the program, as it stands

  /// All commands in turn. `acknowledged` is called whenever the operator may believe something to
  /// be written: a save or a command has returned, or a box has said so.
  void Run(const std::function<void()>& acknowledged = {});
  void RunCommand(std::size_t command);
  void Acknowledge() const;

  /// SQLite's answer about the store.
  std::string Ask(const char* sql) const { return AskSqlite(Laptop.App("Prin1234.mdb"), sql); }
  /// All files but the log, the lines in order of entry in the place of the store.
  Contents Found() const;

  Payroll Laptop;
  AgreeingDesktop Hands;  ///< a report fails the test, unless a row answers it

 private:
  Contents morning_;
  std::function<void()> acknowledged_;
};

/// The entry of Found that is no file.
inline constexpr const char* kLines = "lines";

struct DayCommand {
  const char* Name;
  void (*Run)(WorkingDay&);
};
extern const std::vector<DayCommand> kDay;

/// What the undisturbed day leaves at each acknowledgement, and what may be found after harm: files
/// as they were then or later, never a mixture.
class DayRecord {
 public:
  explicit DayRecord(WorkingDay& day);

  /// Starts the program on what the harm has left.
  ///   acknowledged  how many acknowledgements the operator has had
  ///   returns       what is lost, damaged or mixed; "" nothing
  std::string DamageAfter(WorkingDay& day, std::size_t acknowledged, bool linesToo = true) const;

 private:
  std::map<std::string, std::vector<std::string>> versions_;  // of each file, by name
  std::vector<std::map<std::string, std::size_t>> at_;  // number of them at each acknowledgement
};

}  // namespace ostrel
