#include "exchange/load_descriptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "frame/app_state.h"
#include "platform/files/files.h"
#include "platform/files/removable_disk.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "support/dbf_builder.h"
#include "support/payroll.h"
#include "support/zip_builder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

const fs::path kZips = fs::path(__FILE__).parent_path() / "zips";
const char* const kFirstTime =
    "[ ] First time operation | Insert Halvane backup disk to load employee names & other "
    "descriptions.\\rTech note: the disk drive with the descriptions will be the destination for "
    "import files. | OkCancel -> ";
const char* const kUpdated =
    "[i] Ostrel Payroll | Descriptions have been successfully updated. | Ok -> Ok";

/// As the laptop came from the shop.
void ForgetTheOffice(const Payroll& payroll) {
  fs::remove_all(payroll.App());
  fs::create_directory(payroll.App());
  fs::remove(payroll.Folder.Path("config/Halvane.ini"));
  RemoteDrive.clear();
}

std::string PutOnDisk(const Payroll& payroll, const char* packer, const char* name) {
  fs::copy(kZips / packer, payroll.Disk(name));
  return payroll.Disk(name);
}

/// An employee table of the zips as it must be on the laptop.
std::string WithoutPay(std::string table) {
  constexpr std::size_t kHeader = 33 + 11 * 32, kRecord = 107, kFirstPay = 30;
  for (std::size_t at = kHeader + kFirstPay; at < table.size(); at += kRecord) {
    for (std::size_t pay = 0; pay < 70; pay += 10) table.replace(at + pay, 10, "      0.00");
  }
  return table;
}

void ExpectTheTables(const Payroll& payroll) {
  std::ptrdiff_t tables = 0;
  for (const auto& table : fs::directory_iterator(kZips / "tables")) {
    const std::string name = table.path().filename();
    const std::string packed = ReadWholeFile(table.path());
    EXPECT_EQ(ReadWholeFile(ExistingPath(payroll.App(name))),
              name == "Prms1234.dbf" ? WithoutPay(packed) : packed)
        << name;
    ++tables;
  }
  const fs::directory_iterator files(payroll.App());
  const auto ours = std::count_if(begin(files), end(files), [](const auto& file) {
    return !SameText(file.path().filename().string().substr(0, 4), "Prin");
  });
  EXPECT_EQ(ours, tables) << "the tables, each once, and nothing left behind";
}

TEST(LoadDescriptions, EveryPackersZipSetsUpANewLaptop) {
  for (const char* packer : {"infozip.zip", "infozip-streamed.zip", "infozip-stored.zip",
                             "infozip-zip64.zip", "7zip.zip", "dos.zip", "python.zip"}) {
    SCOPED_TRACE(packer);
    Payroll payroll;
    ForgetTheOffice(payroll);
    const std::string zip = PutOnDisk(payroll, packer, "CLNT1234.ZIP");
    payroll.Desktop.WillAnswer(BoxAnswer::No);
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    payroll.Desktop.WillPick(zip);
    payroll.Desktop.WillAnswer(BoxAnswer::Ok, [&] { ExpectTheTables(payroll); });
    payroll.Start();
    EXPECT_EQ(payroll.Desktop.Shown().back(), kUpdated);
    EXPECT_EQ(lblClient.Caption.Get() + " / " + lblMinWage.Caption.Get(),
              "1234, Three Rivers Orchards / 6.75");
    EXPECT_EQ(payroll.Ini(), "[Ostrel Remote]\r\nRemote Files Floppy=" + payroll.Disk() + "\r\n");
    ExpectTheTables(payroll);
  }
}

TEST(LoadDescriptions, OnANewLaptopEveryWayOutLeavesNoFile) {
  Payroll payroll;
  const std::string open =
      "Ok\n[open] Open Halvane descriptions - click on 'Clnt'+your client#+'.zip' | " +
      RemovableDisk() + " | Halvane Backup of Descriptions (Clnt*.zip) -> ";
  const struct {
    const char* Picked;
    std::string Shown;
  } cases[] = {
      {nullptr, "Cancel"},
      {"", open + "\n[i] Ostrel Payroll | No file opened. Ending | Ok -> Ok"},
      {"/disk/Clnt.zip",
       open + "/disk/Clnt.zip\n[x] Ostrel Payroll | No company information found. | Ok -> Ok"},
  };
  ForgetTheOffice(payroll);
  const std::string before = payroll.Folder.Contents();
  for (const auto& [picked, shown] : cases) {
    payroll.Desktop.WillAnswer(picked == nullptr ? BoxAnswer::Cancel : BoxAnswer::Ok);
    if (picked != nullptr) {
      payroll.Desktop.WillPick(picked);
      payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    }
    EXPECT_THROW(LoadDescFiles(), ProgramEnded);
    EXPECT_EQ(payroll.Desktop.TakeShown(), kFirstTime + shown);
    EXPECT_EQ(payroll.Folder.Contents(), before);
    EXPECT_EQ(RemoteDrive, "");
  }
}

TEST(LoadDescriptions, WithoutASoundZipTheMenuChangesNothing) {
  Payroll payroll;
  payroll.Start();
  const std::string notFound =
      "No Description update file (Clnt*.zip) found in '" + payroll.Disk() + "'\\r";
  const std::string tryAgain =
      "[?] Load Descriptions | " + notFound +
      "Try again?\\rYou will be able to look in a different disk drive. | OkCancel -> Cancel";
  const std::string aborting = "[i] Ostrel Payroll | " + notFound + "Aborting job step. | Ok -> Ok";
  const std::string unfit =
      "[x] Ostrel Payroll | " + payroll.Disk("Clnt1234.zip") + " could not be unpacked.\\r";
  const struct {
    const char* Name;
    std::string Zip, Box;
  } cases[] = {
      {"Clnt.zip", "", tryAgain},
      {"Clnt0999.zip", "", aborting},
      {"Clnt1234.zip", ZipBuilder().Add({"Prms1234.dbf", "no table"}).Bytes(),
       unfit + "External table is not in the expected format: Prms1234.dbf is no dBase table. | "
               "Ok -> Ok"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    const std::string zip = payroll.Folder.Write("disk/" + std::string(c.Name), c.Zip);
    const std::string before = payroll.Folder.Contents();
    payroll.Desktop.WillAnswer(c.Box == tryAgain ? BoxAnswer::Cancel : BoxAnswer::Ok);
    if (c.Box.starts_with("[x]")) {
      EXPECT_THROW(mnuUpdateDescs_Click(), ProgramEnded);
    } else {
      mnuUpdateDescs_Click();
    }
    EXPECT_EQ(payroll.Desktop.TakeShown(), c.Box);
    EXPECT_EQ(payroll.Folder.Contents(), before);
    fs::remove(zip);
  }
}

/// An employee table whose pay is a text, a number and a narrow number; it has no more fields of pay.
std::string OddPayTable(const char* gross, const char* fit, const char* net) {
  DbfBuilder table;
  table.Field("EMPL_NUMB", 'N', 6).Field("SORT_NAME", 'C', 8).Field("CREW", 'N', 1);
  table.Field("YTD_GROSS", 'C', 9).Field("ytd_fit", 'N', 7, 2).Field("YTD_NET", 'N', 2, 2);
  return table.Row({"130", "Durand", "1", gross, fit, net}).Bytes();
}

TEST(LoadDescriptions, NoFileOfTheZipKeepsThePayOfTheYear) {
  Payroll payroll;
  payroll.Start();
  const std::string paid = OddPayTable("45,000.75", "1234.50", "99");
  const std::string unpaid = OddPayTable("0", "0.00", "0");
  payroll.Folder.Write("disk/Clnt1234.zip", ZipBuilder()
                                                .Add({"Prms1234.dbf", paid})
                                                .Add({"PRMS1234.bak", paid})
                                                .Add({"Gleq1234.dbf", paid})
                                                .Add({"Prms1234.cdx", "YTD_GROSS"})
                                                .Bytes());
  const std::string missing = "[!]*Too few parameters*(Err#3061) in Line# 12900*-> Ignore";
  payroll.Choose(mnuUpdateDescs, std::string(kUpdated) + "\n" + missing);
  for (const char* name : {"Prms1234.dbf", "PRMS1234.bak", "Gleq1234.dbf"}) {
    EXPECT_EQ(payroll.Folder.Read(std::string("app/") + name), unpaid) << name;
    EXPECT_EQ(static_cast<int>(fs::status(payroll.App(name)).permissions()), 0600);
  }
  EXPECT_EQ(payroll.Folder.Read("app/Prms1234.cdx"), "YTD_GROSS");

  std::string damaged = paid;
  damaged[10] = '\7';  // the length of a record
  payroll.Folder.Write("disk/Clnt1234.zip", ZipBuilder().Add({"Prms1234.bak", damaged}).Bytes());
  payroll.Desktop.Expect("[x]*The pay of the year stays in it. | Ok -> Ok",
                         [&] { EXPECT_THROW(mnuUpdateDescs_Click(), ProgramEnded); });
  EXPECT_EQ(payroll.Folder.Read("app/PRMS1234.bak"), unpaid);
}

TEST(LoadDescriptions, TheMenuBringsNewEmployeesIntoTheRun) {
  Payroll payroll;
  fs::rename(payroll.App("Prms1234.dbf"), payroll.App("PRMS1234.DBF"));
  payroll.Start();
  PutOnDisk(payroll, "7zip.zip", "Clnt1234.zip");
  PutOnDisk(payroll, "dos.zip", "Clnt9999.zip");  // the first of several is the one
  payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  payroll.Choose(mnuUpdateDescs);
  EXPECT_EQ(payroll.Desktop.TakeShown(), kUpdated);
  ExpectTheTables(payroll);

  std::string crew;
  std::int32_t count = 0;
  DomainList("Prms", "EMPL_NUMB", " where CREW = 2", crew, count);
  EXPECT_EQ(crew + " " + std::to_string(count), " Not in (125,130) 2");
  EXPECT_EQ(lblClient.Caption.Get(), "1234, Sample Ranch");
  payroll.Save("140");
  payroll.Stop();
  payroll.Start();
  EXPECT_EQ(lblClient.Caption.Get(), "1234, Three Rivers Orchards");
  payroll.Save("140");
  EXPECT_EQ(payroll.Fields("SORT_NAME"), "EVANS RHYS|Ortiz Ana");
}

TEST(LoadDescriptions, AnotherDiskIsLearnedWhenTheOldOneIsGone) {
  Payroll payroll;
  payroll.Start();
  fs::rename(payroll.Disk(), payroll.Folder.Path("other"));
  const std::string picked = payroll.Folder.Path("other/Clnt1234.zip");
  fs::copy(kZips / "python.zip", picked);
  for (int box = 0; box < 2; ++box) payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  payroll.Desktop.WillPick(picked);
  payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  payroll.Choose(mnuUpdateDescs);
  EXPECT_EQ(payroll.Desktop.Shown().back(), kUpdated);
  EXPECT_TRUE(ContainsText(payroll.Ini(), "Floppy=" + payroll.Folder.Path("other/") + "\r\n"));
}

TEST(ParsePath, CutsAtTheLastSeparatorOfEitherKind) {
  std::string folder = "before", name = "before";
  ParsePath("c:/back\\up/x.zip", folder, name);
  EXPECT_EQ(folder + " " + name, "c:/back\\up x.zip");
  ParsePath("a:\\Clnt1234.zip", folder, name);
  EXPECT_EQ(folder + " " + name, "a: Clnt1234.zip");
  ParsePath("Clnt1234.zip", folder, name);
  EXPECT_EQ(folder + " " + name, " Clnt1234.zip");
}

TEST(RemovableDisk, IsTheFirstMountThatTheDesktopMade) {
  const std::pair<const char*, const char*> cases[] = {
      {"proc /proc proc rw 0 0\n/dev/sda1 / ext4 rw 0 0\n/dev/sdb1 /media ext4 rw 0 0\n", ""},
      {"/dev/sda1 / ext4 rw 0 0\n/dev/sdb1 /media/ann/HALVANE vfat rw 0 0\n"
       "/dev/sdc1 /run/media/ann/B vfat rw 0 0",
       "/media/ann/HALVANE"},
      {"/dev/sdb1 /run/media/ann/My\\040Disk\\0\\", "/run/media/ann/My Disk\\0\\"},
  };
  for (const auto& [mounts, folder] : cases) EXPECT_EQ(RemovableMount(mounts), folder) << mounts;
}

}  // namespace
}  // namespace ostrel
