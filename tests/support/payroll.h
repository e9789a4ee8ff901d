#pragma once

// A laptop with a made-up client, for tests of the program as a whole: a folder with the office's
// tables, the office's disk, an ini file of its own, the scripted desktop, and a foreman's hands.

#include <string>
#include <string_view>

#include "support/scripted_desktop.h"
#include "support/temp_folder.h"

namespace ostrel {

class Payroll {
 public:
  Payroll();
  ~Payroll();

  TempFolder Folder;  ///< with the folders app, disk and config in it
  ScriptedDesktop Desktop;

  /// Paths in the application folder and on the office's disk.
  std::string App(std::string_view name = "") const {
    return Folder.Path("app/" + std::string(name));
  }
  std::string Disk(std::string_view name = "") const {
    return Folder.Path("disk/" + std::string(name));
  }
  void WriteIni(std::string_view keys);  ///< replaces the program's section
  std::string Ini() const { return Folder.Read("config/Halvane.ini"); }

  /// Loads the form as main does and shows it. The clock stands at 11/18/04 10:42 am.
  void Start(bool timeClock = true);
  /// Closes the form as the window's close box does, and forgets everything in memory.
  void Stop();
  void SetClock(const char* dateAndTime);  ///< "11/18/04 3:15 pm"

  /// Gives the focus to a box, replaces its text and leaves the focus there.
  void Fill(TextBox& box, std::string_view text);
  /// The row of boxes from the first on: "130|127.25|9|LBS|.27|12|70|101|CLEAN UP".
  static void FillBoxes(const std::string& texts);
  void Choose(MenuItem& item);  ///< as a click on it; disabled or hidden entries fail the test
  /// The same with all that is shown meanwhile, as ScriptedDesktop::Expect has it.
  void Choose(MenuItem& item, const std::string& shown) {
    Desktop.Expect(shown, [&] { Choose(item); });
  }
  /// The form as it stands saved as a line for an employee.
  void Save(std::string_view employee);

  /// Lines of the store, straight into it: "130 I 7:00 am|130 P 8:00 am 100 0.5" is employee, kind,
  /// time on the day of the date box, quantity and rate. The view follows.
  void AddLine(const std::string& lines);

  /// The lines in order of entry: "130 I 07:00 am|130 P 08:00 am 100x0.5=50".
  std::string Lines() const;
  /// Given fields of all lines in order of entry: "130,7.5|140,-". Null is "-".
  std::string Fields(std::string_view names) const;
};

/// The laptop with the program running.
class RunningPayroll : public Payroll {
 public:
  explicit RunningPayroll(bool timeClock = true) { Start(timeClock); }
};

}  // namespace ostrel
