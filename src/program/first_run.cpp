#include "program/first_run.h"

#include "platform/desktop/child_process.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/values/failure.h"

namespace ostrel {

namespace {

// Where the office's installation puts them.
const std::string kWordProcessor = "c:\\program files\\microsoft office\\office\\winword";
const std::string kOfficeManual = "c:\\halvane\\Ostrel Payroll\\Ostrel Payroll.doc";

const std::string kIntroduction =
    "Orveth's Ostrel Payroll program lets a foreman enter a crew's payroll timecard information on "
    "a "
    "laptop computer in the field.\r"
    "That data then is imported into a computer in the office that is running Halvane Accounting.\r"
    "\r"
    "Would you like to view the short manual with more information?";

/// The manual that comes with the program, which needs no word processor: beside the program, or
/// where a system keeps what belongs to the programs of its folder bin.
std::string ShippedManual() {
  const std::string folder = ExecutableFolder();
  const std::string beside = folder + kPathSeparator + "manual.html";
  const std::string shared =
      folder.substr(0, folder.rfind(kPathSeparator)) + "/share/ostrel-payroll/manual.html";
  return !Exist(beside) && Exist(shared) ? shared : beside;
}

void SayNoManual(const std::string& reason, const std::string& detail) {
  MessageBoxRequest box;
  box.Text = reason + "\rContact Orveth to have them mail or email a manual to you.";
  box.Icon = BoxIcon::Information;
  box.Title = "Cannot display the manual on this computer";
  box.Detail = detail;
  MsgBox(box);
}

void ShowShippedManual() {
  const std::string manual = ShippedManual();
  if (!Exist(manual)) {
    SayNoManual(manual + "\rManual not found, either reinstall programs or", "");
  } else if (!TheDesktop().ShowDocument(manual)) {
    SayNoManual(
        "Microsoft Word program not installed on this computer so cannot display the ostrel "
        "payroll "
        "manual.",
        "The manual is also here, for any web browser: " + manual);
  }
}

void ShowManual() {
  if (Exist(kWordProcessor + ".exe") && Exist(kOfficeManual)) {
    RunAndWait(kWordProcessor + " " + ShortPathOf(kOfficeManual));
  } else {
    ShowShippedManual();
  }
}

}  // namespace

void ExitWShowManual() {
  Beep();
  const BoxAnswer answer = MsgBox(kIntroduction, BoxButtons::YesNoCancel, BoxIcon::Question,
                                  "Orveth Ostrel Payroll Program");
  // Yes ends the program, too: the manual is to be read first, and the next start asks again.
  if (answer == BoxAnswer::No) return;
  if (answer == BoxAnswer::Yes) ShowManual();
  throw ProgramEnded{};
}

std::int32_t RunAndWait(const std::string& CmdLine) { return RunCommandLine(CmdLine); }

std::string ShortPathOf(const std::string& LongPath) { return ShortFormOf(LongPath); }

}  // namespace ostrel
