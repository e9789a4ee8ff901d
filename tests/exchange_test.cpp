// The import file, to the byte.

#include <gtest/gtest.h>

#include <filesystem>

#include "frame/app_state.h"
#include "scan_main/scan_main.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

std::string Written(int lines) {
  return "[i] &Write Halvane Import File | " + std::to_string(lines) +
         " lines have successfully been written. | Ok -> Ok";
}

TEST(ImportFile, CarriesTheDayOfTheTimeClock) {
  RunningPayroll payroll;
  payroll.AddLine(
      "101 I 7:00 am|130 I 7:00 am|130 P 8:00 am 150 .5|130 O 11:30 am|140 P 9:00 am 3 1.25|"
      "101 O 3:00 pm");
  txtComments.Text = "Crew \"2\" \xC3\xA9\xE2\x82\xAC\xE6\xBC\xA2";
  payroll.Choose(mnuWriteImportFile, Written(3));
  EXPECT_EQ(payroll.Folder.Read("disk/Pck-1234.asc"),
            "*1234, Sample Ranch\r\n*11/18/04, Thursday\r\n*Crew \"2\" \xE9\x80?\r\n"
            "101,8,\"0\",\"HRS\",#NULL#,#NULL#,\"11/18/04\",#NULL#,\"\",\"H\",#NULL#\r\n"
            "130,150,0.5,#NULL#,#NULL#,#NULL#,\"11/18/04\",#NULL#,4.5,\"P\",#NULL#\r\n"
            "140,3,1.25,#NULL#,#NULL#,#NULL#,\"11/18/04\",#NULL#,#NULL#,\"P\",#NULL#\r\n");
}

TEST(ImportFile, CarriesThePlainLayoutInTheReverseOfTheDisplay) {
  RunningPayroll payroll(false);
  payroll.Folder.Write("disk/Pck-1234.asc",
                       "an older and longer file that must be gone afterwards");
  const std::string asked = "[input] Piecework Rate not set*-> -9";
  const std::string lines[][2] = {{"310|0|8|BOX|s|11", ""},
                                  {"207|150|7.5|BOX|12.5|11", ""},
                                  {"99|2|1|BOX|Std|11", asked},
                                  {"98|0|.25|BOX|.5|11", ""}};
  for (const auto& [boxes, shown] : lines) {
    Payroll::FillBoxes(boxes);
    payroll.Desktop.Expect(shown, [] { cmdSave.Press(); });
  }
  payroll.Choose(mnuEmplOrder);
  payroll.Choose(mnuWriteImportFile, Written(4));
  EXPECT_EQ(payroll.Folder.Read("disk/Pck-1234.asc"),
            "*1234, Sample Ranch\r\n*11/18/04, Thursday\r\n*Crew#2\r\n"
            "310,8,\"\",\"HRS\",11,0,\"11/18/04\",0,\"\",\"H\",\" \"\r\n"
            "207,150,12.5,\"BOX\",11,0,\"11/18/04\",0,7.5,\"P\",\" \"\r\n"
            "99,2,-9,\"BOX\",11,0,\"11/18/04\",0,1,\"P\",\" \"\r\n"
            "98,0.25,\"0.5\",\"HRS\",11,0,\"11/18/04\",0,\"\",\"H\",\" \"\r\n");
}

TEST(ImportFile, NeedsLinesADayAndADisk) {
  RunningPayroll payroll;
  payroll.Choose(mnuWriteImportFile,
                 "[i] Ostrel Payroll | No lines to export.\\rAborting job step. | Ok -> Ok");
  payroll.Save("130");
  payroll.Choose(mnuDisplayAllDates);
  payroll.Choose(mnuWriteImportFile,
                 "[!] Ostrel Payroll | The Date='All'!\\rSpecify the one day desired then rerun "
                 "this job step. | Ok -> Ok");
  payroll.Choose(mnuDisplayAllDates);
  EXPECT_TRUE(std::filesystem::is_empty(payroll.Disk()));

  std::filesystem::remove(payroll.Disk());
  const std::string notReady = "[ ] &Write Halvane Import File | Disk is not ready in '" +
                               RemoteDrive + "'.\\rClick 'Ok' when ready. | OkCancel -> ";
  payroll.Choose(mnuWriteImportFile, notReady + "Ok\n" + notReady +
                                         "Cancel\n[i] Ostrel Payroll | &Write Halvane Import "
                                         "File canceled. | Ok -> Ok");
  payroll.SetClock("11/18/04 11:42 am");
  payroll.Desktop.WillAnswer(BoxAnswer::Ok,
                             [&] { std::filesystem::create_directory(payroll.Disk()); });
  payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  payroll.Choose(mnuWriteImportFile);
  EXPECT_EQ(payroll.Desktop.TakeShown(), notReady + "Ok\n" + Written(1));
}

TEST(ImportFile, GoesOnWithTheValuesOfTheLinesWhereNobodyClockedIn) {
  RunningPayroll payroll;
  payroll.AddLine("140 P 9:00 am 3 1.25|140 O 9:30 am");
  payroll.Choose(mnuWriteImportFile,
                 "[!]*No employees clocked in on 11/18/04!*-> Ok\n" + Written(1));
}

}  // namespace
}  // namespace ostrel
