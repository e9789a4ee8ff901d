#include "frame/first_run.h"

#include <gtest/gtest.h>

#include "platform/failure.h"
#include "platform/files/files.h"
#include "support/scripted_desktop.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

TEST(FirstRun, ExplainsItselfAndShowsTheManualOnYes) {
  const std::string question =
      "[?] Orveth Ostrel Payroll Program | Orveth's Ostrel Payroll program lets a foreman enter a "
      "crew's payroll timecard information on a laptop computer in the field.\\rThat data then is "
      "imported into a computer in the office that is running Halvane Accounting.\\r\\rWould you "
      "like to view the short manual with more information? | YesNoCancel -> ";
  const std::string cannot = "\n[i] Cannot display the manual on this computer | ";
  const std::string contact = "\\rContact Orveth to have them mail or email a manual to you.";
  const TempFolder app;
  SetExecutable(app.Path(), "OstrelPayroll");
  const std::string manual = app.Path("manual.html");
  const struct {
    bool Manual, Viewer;
    std::string Shown;
  } cases[] = {
      {true, true, "No"},
      {true, true, "Cancel"},
      {true, true, "Yes\n[document] " + manual},
      {false, true,
       "Yes" + cannot + manual + "\\rManual not found, either reinstall programs or" + contact +
           " | Ok -> Ok"},
      {true, false,
       "Yes\n[document] " + manual + cannot +
           "Microsoft Word program not installed on this computer so cannot display the ostrel "
           "payroll manual." +
           contact + " (The manual is also here, for any web browser: " + manual + ") | Ok -> Ok"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Shown);
    ScriptedDesktop desktop;
    std::filesystem::remove(manual);
    if (test.Manual) app.Write("manual.html", "<p>Manual</p>");
    const std::string before = app.Contents();
    desktop.SetViewer(test.Viewer);
    bool ended = false;
    desktop.Expect(question + test.Shown, [&] {
      try {
        ExitWShowManual();
      } catch (const ProgramEnded&) {
        ended = true;
      }
    });
    EXPECT_EQ(ended, test.Shown != "No");
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
