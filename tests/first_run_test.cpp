#include "frame/first_run.h"

#include <gtest/gtest.h>

#include "platform/failure.h"
#include "platform/files/files.h"
#include "support/scripted_desktop.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

const char* const kQuestion =
    "[?] Orveth Ostrel Payroll Program | Orveth's Ostrel Payroll program lets a foreman enter a "
    "crew's payroll timecard information on a laptop computer in the field.\\rThat data then is "
    "imported into a computer in the office that is running Halvane Accounting.\\r\\rWould you "
    "like "
    "to view the short manual with more information? | YesNoCancel -> ";
const std::string kCannot = "\n[i] Cannot display the manual on this computer | ";
const std::string kContact = "\\rContact Orveth to have them mail or email a manual to you.";

TEST(FirstRun, ExplainsItselfAndShowsTheManualOnYes) {
  const TempFolder app;
  SetExecutable(app.Path(), "OstrelPayroll");
  const std::string manual = app.Path("manual.html");
  const struct {
    BoxAnswer Answer;
    bool Manual, Viewer;
    std::string Shown;
  } cases[] = {
      {BoxAnswer::No, true, true, "No"},
      {BoxAnswer::Cancel, true, true, "Cancel"},
      {BoxAnswer::Yes, true, true, "Yes\n[document] " + manual},
      {BoxAnswer::Yes, false, true,
       "Yes" + kCannot + manual + "\\rManual not found, either reinstall programs or" + kContact +
           " | Ok -> Ok"},
      {BoxAnswer::Yes, true, false,
       "Yes\n[document] " + manual + kCannot +
           "Microsoft Word program not installed on this computer so cannot display the ostrel "
           "payroll manual." +
           kContact + " (The manual is also here, for any web browser: " + manual + ") | Ok -> Ok"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Shown);
    ScriptedDesktop desktop;
    std::filesystem::remove(manual);
    if (c.Manual) app.Write("manual.html", "<p>Manual</p>");
    const std::string before = app.Contents();
    desktop.SetViewer(c.Viewer);
    desktop.WillAnswer(c.Answer);
    if (c.Shown.find(kCannot) != std::string::npos) desktop.WillAnswer(BoxAnswer::Ok);
    if (c.Answer == BoxAnswer::No) {
      ExitWShowManual();
    } else {
      EXPECT_THROW(ExitWShowManual(), ProgramEnded);
    }
    EXPECT_EQ(desktop.TakeShown(), kQuestion + c.Shown);
    EXPECT_EQ(desktop.BeepCount(), 1);
    EXPECT_EQ(app.Contents(), before);
  }
  SetExecutable({}, {});
}

#ifndef _WIN32
TEST(FirstRun, WaitsForAProgramAndTakesItsExitCode) {
  const TempFolder folder;
  const std::string file = folder.Path("done file");
  EXPECT_EQ(RunAndWait("echo done > \"" + file + "\"; exit 7"), 7);
  EXPECT_EQ(folder.Read("done file"), "done\n");
  EXPECT_EQ(RunAndWait("kill -TERM $$"), 128 + 15);
  EXPECT_THROW(RunAndWait("/no/such/program"), Failure);
  EXPECT_EQ(ShortPathOf(file), file);
}
#endif

}  // namespace
}  // namespace ostrel
