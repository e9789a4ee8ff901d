#pragma once

// A laptop with a made-up client, for tests of the program as a whole: a folder with the office's
// tables, the office's disk, an ini file of its own, the scripted desktop, and a foreman's hands.

#include <string>
#include <string_view>

#include "entry/scan_main.h"
#include "support/scripted_desktop.h"
#include "support/temp_folder.h"

namespace ostrel {

class Payroll {
 public:
  Payroll();
  ~Payroll();

  TempFolder Folder;  ///< with the folders app, disk and config in it
  ScriptedDesktop Desktop;

  std::string App(std::string_view name = "") const;   ///< path in the application folder
  std::string Disk(std::string_view name = "") const;  ///< path on the office's disk
  void WriteIni(std::string_view keys);                ///< replaces the program's section
  std::string Ini() const;

  /// Loads the form as main does and shows it. The clock stands at 11/18/04 10:42 am.
  void Start(bool timeClock = true);
  /// Closes the form as the window's close box does, and forgets everything in memory.
  void Stop();
  void SetClock(const char* dateAndTime);  ///< "11/18/04 3:15 pm"

  /// Keys as the operator presses them, each with all that comes of it. Characters type themselves;
  /// "\r" is Enter, "\t" Tab, "\b" Backspace, "\x1b" Esc, "<" Left and ">" Right arrow.
  void Keys(std::string_view keys);
  /// Gives the focus to a box, replaces its text and leaves the focus there.
  void Fill(TextBox& box, std::string_view text);
  void Choose(MenuItem& item);  ///< as a click on it; disabled or hidden entries fail the test
  /// The form as it stands saved as a line for an employee.
  void Save(std::string_view employee);

  /// One line of the store, straight into it: "130 P 8:00 am 100 0.5" is employee, kind, time on the
  /// day of the date box, quantity and rate.
  void AddLine(std::string_view line);

  /// The lines in order of entry, "|" between them: "130 I 07:00 am|130 P 08:00 am 100x0.5=50 3h
  /// 16.67/h". What is unset is left out.
  std::string Lines() const;
  /// Given fields of all lines in order of entry: "130,7.5|140,". Null is "-".
  std::string Fields(std::string_view names) const;

 private:
  void Key(char key);
};

}  // namespace ostrel
