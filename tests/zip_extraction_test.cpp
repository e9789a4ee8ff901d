#include "platform/files/zip_extraction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/failure.h"
#include "platform/files/staged_files.h"
#include "support/full_disk.h"
#include "support/temp_folder.h"
#include "support/zip_builder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

/// The zip and the folder that it is unpacked into, which holds three files of an earlier zip.
class ZipExtractionTest : public ::testing::Test {
 protected:
  ZipExtractionTest() {
    for (const char* name : {"PRMS1234.DBF", "Hvcl1234.dbf", "Hvcl1234.cdx", "Prin1234.mdb"}) {
      app_.Write(name, std::string("old ") + name);
    }
  }

  std::string Extract(const std::string& zip) {
    disk_.Write("Clnt1234.zip", zip);
    return ExtractAgain();
  }

  std::string ExtractAgain() {
    return ExtractZip({disk_.Path("Clnt1234.zip"),
                       {"Hvcl1234", "Prms1234"},
                       app_.Path(),
                       [](const std::string& name, const std::string& content) {
                         if (content == "unfit") throw Failure(3274, name + " is unfit.");
                       }});
  }

  /// What went wrong, without the words that every text begins with.
  std::string FaultOf(const std::string& zip) {
    const std::string text = Extract(zip);
    const std::string head = disk_.Path("Clnt1234.zip") + " could not be unpacked.\r";
    return text.starts_with(head) ? text.substr(head.size()) : "?" + text;
  }

  TempFolder disk_;
  TempFolder app_;
};

const char* const kOldFiles =
    "Hvcl1234.cdx=old Hvcl1234.cdx|Hvcl1234.dbf=old Hvcl1234.dbf|PRMS1234.DBF=old PRMS1234.DBF|"
    "Prin1234.mdb=old Prin1234.mdb|";

const ZipMemberBytes kHvcl{"Hvcl1234.dbf", "new Hvcl"};
const ZipMemberBytes kPrms{"Prms1234.dbf", "new Prms"};

TEST(ZipNames, AreWantedWhenTheyAreFilesOfTheBaseNames) {
  const std::vector<std::string> bases{"Prms1234", "Hvcl1234"};
  for (const char* wanted :
       {"Prms1234.dbf", "PRMS1234.DBF", "hvcl1234.x", "Prms1234.a.b", "Prms1234.\xC3\xB1"}) {
    EXPECT_TRUE(IsWantedName(wanted, bases)) << wanted;
  }
  for (const char* other : {"",
                            "Prms1234",
                            "Prms1234.",
                            "Prms1234.dbf.",
                            "Prms1234.dbf ",
                            "Prms12345.dbf",
                            "xPrms1234.dbf",
                            ".Prms1234.dbf",
                            "Glen1234.dbf",
                            "/Prms1234.dbf",
                            "./Prms1234.dbf",
                            "../Prms1234.dbf",
                            "a/Prms1234.dbf",
                            "a\\Prms1234.dbf",
                            "c:Prms1234.dbf",
                            "Prms1234./x",
                            "Prms1234.\\..\\x",
                            "Prms1234.dbf:hidden",
                            "Prms1234.d*f",
                            "Prms1234.d?f",
                            "Prms1234.d\nf",
                            "Prms1234.dbf/",
                            "CON"}) {
    EXPECT_FALSE(IsWantedName(other, bases)) << other;
  }
}

TEST_F(ZipExtractionTest, NewFilesTakeThePlacesOfOldOnesInAnyCase) {
  const std::string zip = ZipBuilder()
                              .Add(kPrms)
                              .Add({"../Prms1234.dbf", "evil"})
                              .Add({"/tmp/Prms1234.cdx", "evil"})
                              .Add({"old/Prms1234.cdx", "foldered"})
                              .Add({"Prin1234.mdb", "not wanted"})
                              .Add(kHvcl)
                              .Add({"Hvcl1234.FPT", ""})
                              .Bytes();
  EXPECT_EQ(Extract(zip), "");
  EXPECT_EQ(app_.Contents(),
            "Hvcl1234.FPT=|Hvcl1234.cdx=old Hvcl1234.cdx|Hvcl1234.dbf=new Hvcl|"
            "Prin1234.mdb=old Prin1234.mdb|Prms1234.dbf=new Prms|");
  EXPECT_EQ(disk_.Count(), 1);
}

TEST_F(ZipExtractionTest, AZipThatIsNotSoundChangesNothing) {
  const auto with = [](const ZipMemberBytes& member) {
    return ZipBuilder().Add(kHvcl).Add(member).Bytes();
  };
  const std::string good = with(kPrms);
  ZipBuilder swarm, flood;
  for (int i = 0; i <= 100; ++i) swarm.Add({"Prms1234." + std::to_string(i), ""});
  for (int i = 0; i < 5; ++i) flood.Add({"Prms1234." + std::to_string(i), "", 0, 256 << 20});

  const struct {
    std::string Zip;
    const char* Fault;
  } cases[] = {
      {"", "Not a zip archive"},
      {"no zip at all, but a text of some length", "Not a zip archive"},
      {good.substr(0, good.size() - 30), "Not a zip archive"},
      {good.substr(30), "Zip archive inconsistent"},
      {ZipBuilder().Add({"x/Prms1234.dbf", "a"}).Add({"Prms1.dbf", "a"}).Bytes(),
       "It holds no tables of this client, or only in folders."},
      {with({"Prms1234.dbf", "new", 0100644, -1, 1}), "Prms1234.dbf: CRC error"},
      {with({"Prms1234.dbf", "new", 0100644, 2}), "Prms1234.dbf: Longer than the zip says"},
      {with({"Prms1234.dbf", "new", 0100644, 4}), "Prms1234.dbf: "},
      {with({"Prms1234.dbf", "new", 0100644, 0}), "Prms1234.dbf: Longer than the zip says"},
      {with({"Prms1234.dbf", "no stream", 0100644, 3, 0, 8}),
       "Prms1234.dbf: Zlib error: data error"},
      {with({"Prms1234.dbf", "new", 0100644, -1, 0, 6}),
       "Prms1234.dbf: Compression method not supported"},
      {with({"Prms1234.dbf", "encrypted", 0100644, -1, 0, 0, 1}),
       "Prms1234.dbf: No password provided"},
      {with({"Prms1234.dbf", "bomb", 0100644, (256 << 20) + 1}),
       "Prms1234.dbf is too large to be a payroll table."},
      {flood.Bytes(), "Its files are too large to be payroll tables."},
      {swarm.Bytes(), "It holds more files than any client has tables."},
      {with({"HVCL1234.DBF", "again"}), "It holds HVCL1234.DBF twice."},
      {with({"Prms1234.lnk", "/etc/passwd", 0120777}), "Prms1234.lnk is no plain file."},
      {with({"Prms1234.dev", "", 0020644}), "Prms1234.dev is no plain file."},
      {with({"Prms1234.dbf", "unfit"}), "Prms1234.dbf is unfit."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Fault);
    EXPECT_THAT(FaultOf(c.Zip), ::testing::StartsWith(c.Fault));
    EXPECT_EQ(app_.Contents(), kOldFiles);
  }
}

TEST_F(ZipExtractionTest, EveryOldFileIsBackWhenTheDiskFails) {
  const ZipMemberBytes large{"Prms1234.fpt", std::string(100'000, 'm')};
  const std::string zip = ZipBuilder().Add(kHvcl).Add(kPrms).Add(large).Bytes();
  // A folder under the name of the last file to get its place: all others have theirs by then.
  fs::create_directory(app_.Path("Prms1234.fpt"));
  EXPECT_THAT(Extract(zip), ::testing::HasSubstr("\rPath/File access error: "));
  fs::remove(app_.Path("Prms1234.fpt"));
  EXPECT_EQ(app_.Contents(), kOldFiles);
  {
    const FullDisk full(50'000);
    EXPECT_THAT(ExtractAgain(), ::testing::HasSubstr("\rDisk full: "));
  }
  EXPECT_EQ(app_.Contents(), kOldFiles);
  EXPECT_NE(ExtractZip({disk_.Path("none.zip"), {"Hvcl1234"}, app_.Path(), {}}), "");
  EXPECT_EQ(app_.Contents(), kOldFiles);
}

// A folder as a power cut leaves it once `moves` of the four renames were made: two old files aside,
// two new ones in place.
void CutOffAfter(const TempFolder& app, int moves) {
  const auto rename = [&](const char* from, const char* to) {
    if (moves-- > 0) fs::rename(app.Path(from), app.Path(to));
  };
  fs::create_directory(app.Path(".ostrel-ready"));
  fs::create_directory(app.Path(".ostrel-old"));
  app.Write(".ostrel-ready/Hvcl1234.dbf", "new Hvcl");
  app.Write(".ostrel-ready/Prms1234.dbf", "new Prms");
  rename("Hvcl1234.dbf", ".ostrel-old/Hvcl1234.dbf");
  rename(".ostrel-ready/Hvcl1234.dbf", "Hvcl1234.dbf");
  rename("PRMS1234.DBF", ".ostrel-old/PRMS1234.DBF");
  rename(".ostrel-ready/Prms1234.dbf", "Prms1234.dbf");
}

TEST(StagedFiles, AnInstallCutOffAnywhereIsResumed) {
  for (int moves = 0; moves <= 4; ++moves) {
    SCOPED_TRACE(moves);
    const TempFolder app;
    app.Write("Hvcl1234.dbf", "old");
    app.Write("PRMS1234.DBF", "old");
    CutOffAfter(app, moves);
    EXPECT_TRUE(ResumeInstall(app.Path()));
    EXPECT_EQ(app.Contents(), "Hvcl1234.dbf=new Hvcl|Prms1234.dbf=new Prms|");
    EXPECT_FALSE(ResumeInstall(app.Path()));
  }
}

TEST(StagedFiles, WhatWasNotInstalledIsThrownAway) {
  const TempFolder app;
  fs::create_directory(app.Path(".ostrel-new"));
  app.Write(".ostrel-new/Prms1234.fpt", "of a use that a power cut ended");
  {
    const StagedFiles staged(app.Path());
    staged.Add("Prms1234.dbf", "new");
    staged.Install();
  }
  EXPECT_EQ(app.Contents(), "Prms1234.dbf=new|");
  { StagedFiles(app.Path()).Add("Prms1234.dbf", "newer"); }
  EXPECT_EQ(app.Contents(), "Prms1234.dbf=new|");
}

}  // namespace
}  // namespace ostrel
