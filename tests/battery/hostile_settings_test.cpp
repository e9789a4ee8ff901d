// Settings that others have been at.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "battery/battery.h"
#include "battery/working_day.h"
#include "scan_main/scan_main.h"

namespace ostrel {
namespace {

class HostileSettings : public testing::Test {
 protected:
  HostileSettings() {
    operator_.Picked = payroll_.Folder.Write("disk/Clnt1234.zip", NextWeeksZip(payroll_).Bytes());
    operator_.SayNo = true;  // to the manual
  }

  /// Starts and ends the program on such a file; `others`, which is not ours, must be there as before.
  ///   returns  the settings "comments|time clock|autoset"
  std::string StartOn(const std::string& file, const std::string& others) {
    payroll_.Folder.Write("config/Halvane.ini", file);
    payroll_.Start();
    const std::string settings = txtComments.Text.Get() + (mnuUseTimeClock.Checked ? "|1" : "|0") +
                                 (mnuAutosetTime.Checked ? "|1" : "|0");
    payroll_.Stop();
    EXPECT_NE(payroll_.Ini().find(others), std::string::npos);
    operator_.Reports.clear();
    return settings;
  }

  Payroll payroll_;
  AgreeingDesktop operator_{payroll_.Desktop, BoxAnswer::Ignore};
};

TEST_F(HostileSettings, GiveDefaultsOrTheFirstValue) {
  const std::string ours = "[Ostrel Remote]\r\nRemote Files Floppy=" + payroll_.Disk() +
                           "\r\nUseTimeClock=True\r\nAutosetTime=False\r\nComments=Crew#7";
  std::string wide;
  for (const char c : "[Office]\r\nA=1\r\n" + ours) wide += std::string{c, '\0'};
  const std::string huge = std::string(1 << 20, 'k') + "=" + std::string(1 << 20, 'v') + "\r\n";
  const std::string again = "\r\n[OSTREL REMOTE]\r\nComments=Crew#9\r\nAutosetTime=True\r\n";
  const std::string twice = "\r\nComments=Crew#9\r\nUseTimeClock=False\r\nAutosetTime=True\r\n";
  const std::string nothing(5000, '\0');
  const char* const defaults = "Crew#2|0|1";
  const char* const read = "Crew#7|1|0";
  const struct {
    std::string File, Others, Settings;
  } cases[] = {{"", "", defaults},
               {nothing, nothing, defaults},
               {ours, "", read},
               {"\xFF\xFE" + wide, "\xFF\xFE" + wide.substr(0, 2 * 15), read},
               {huge + ours + "\r\n" + huge, "\r\n" + huge, read},
               {huge + ours, huge, read},
               {ours + again, again, read},
               {ours + twice, twice, read}};
  Row row("Settings", "files of which a writer of its own section alone loses lines");
  for (const auto& [file, others, settings] : cases) {
    ++row["odd files"];
    SCOPED_TRACE(file.substr(0, 60));
    EXPECT_EQ(StartOn(file, others), settings);
    if (ours.find(others) == ours.npos) ++row.Control;
  }
}

}  // namespace
}  // namespace ostrel
