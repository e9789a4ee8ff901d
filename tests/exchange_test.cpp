// The import file, to the byte.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "frame/app_state.h"
#include "platform/files/removable_disk.h"
#include "scan_main/scan_main.h"
#include "support/agreeing_desktop.h"
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

const std::string kNothingWritten =
    "[i] &Write Halvane Import File | No lines have been written.\\rAborting job step. | Ok -> Ok";

TEST(ImportFile, IsSaidToBeWrittenOnlyWhereItIs) {
  RunningPayroll payroll;
  payroll.AddLine("140 P 9:00 am 3 1.25|140 P 9:10 am 3 1.25");
  std::filesystem::create_directory(payroll.Disk("Pck-1234.asc"));  // cannot be opened: one report
  payroll.Choose(mnuWriteImportFile, "[!]*(Err#75) in Line# 5020*-> Ignore\n" + kNothingWritten);
  std::filesystem::remove(payroll.Disk("Pck-1234.asc"));

  // Taken out while a box stood; the failure is ignored.
  AgreeingDesktop desktop(payroll.Desktop, BoxAnswer::Ignore);
  desktop.OnMessage = [&](const std::string&) { std::filesystem::remove_all(payroll.Disk()); };
  payroll.Choose(mnuWriteImportFile);
  ASSERT_EQ(desktop.Reports.size(), 1U);
  EXPECT_TRUE(desktop.Reports[0].find("(Err#71) in Line# 5110") != std::string::npos);
  EXPECT_EQ(desktop.Messages.back(), "No lines have been written.\rAborting job step.");
}

TEST(ImportFile, LiesInTheFolderThatTheSettingsName) {
  Payroll payroll;
  const std::string folder = payroll.Folder.Path("disk");
  // What the settings give back of a longer one ends in the middle of a name.
  const std::string cut = folder + "/" + std::string(253 - folder.size(), 'd');
  std::filesystem::create_directories(cut);
  const std::string cases[][2] = {
      {folder, Written(1)},
      {cut + "d/", "[ ]*Disk is not ready in '" + cut + "'*-> Cancel\n[i]*canceled*-> Ok"}};
  for (const auto& [setting, shown] : cases) {
    payroll.Folder.Write("config/Halvane.ini",
                         "[Ostrel Remote]\r\nRemote Files Floppy=" + setting + "\r\n");
    payroll.Start();
    payroll.Save("130");
    payroll.Choose(mnuWriteImportFile, shown);
    EXPECT_EQ(std::filesystem::remove(payroll.Disk("Pck-1234.asc")), setting == folder);
    EXPECT_TRUE(std::filesystem::is_empty(cut));
    EXPECT_FALSE(std::filesystem::exists(cut + "Pck-1234.asc"));
    payroll.Stop();
  }
}

#ifdef __linux__
/// The folder stays when the disk goes; a link to memory stands for a disk put in there.
TEST(ImportFile, IsNotWrittenIntoTheFolderThatADiskHasLeft) {
  Payroll payroll;
  const std::string folder = payroll.Folder.Path("disk");
  std::string disk = "/dev/shm/ostrel-" + std::string(6, 'X');
  if (DiskHolding("/dev/shm") == "/" || DiskHolding(folder) != "/" ||
      mkdtemp(disk.data()) == nullptr) {
    GTEST_SKIP() << "no disk of its own to lay the folder on";
  }
  const auto putIn = [&] {
    std::filesystem::remove(folder);
    std::filesystem::create_directory_symlink(disk, folder);
  };
  putIn();
  payroll.Start();
  payroll.Save("130");
  std::filesystem::remove(folder);
  std::filesystem::create_directory(folder);
  const std::string notReady = "[ ]*Disk is not ready in '" + RemoteDrive + "'*-> ";
  payroll.Choose(mnuWriteImportFile, notReady + "Ok\n" + notReady + "Cancel\n[i]*canceled*-> Ok");
  EXPECT_TRUE(std::filesystem::is_empty(folder));
  putIn();
  payroll.Choose(mnuWriteImportFile, "[i]*lines have successfully been written*-> Ok");
  EXPECT_TRUE(std::filesystem::exists(disk + "/Pck-1234.asc"));
  std::filesystem::remove_all(disk);
}

TEST(Disks, HoldWhatIsMountedBelowThem) {
  const std::string mounts =
      "/dev/sda1 / ext4 rw 0 0\n/dev/sdb1 /media/me/OFFICE\\040DISK vfat rw 0 0\n"
      "tmpfs /media tmpfs rw 0 0\n";
  const char* const cases[][2] = {{"/media/me/OFFICE DISK/pay", "/media/me/OFFICE DISK"},
                                  {"/media/me/OFFICE DISK", "/media/me/OFFICE DISK"},
                                  {"/media/me/OFFICE DISK 2", "/media"},
                                  {"/home/me", "/"}};
  for (const auto& [path, mount] : cases) EXPECT_EQ(MountHolding(mounts, path), mount) << path;
}
#endif

TEST(ImportFile, GoesOnWithTheValuesOfTheLinesWhereNobodyClockedIn) {
  RunningPayroll payroll;
  payroll.AddLine("140 P 9:00 am 3 1.25|140 O 9:30 am");
  payroll.Choose(mnuWriteImportFile,
                 "[!]*No employees clocked in on 11/18/04!*-> Ok\n" + Written(1));
}

}  // namespace
}  // namespace ostrel
