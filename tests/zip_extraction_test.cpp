#include "platform/files/zip_extraction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/failure.h"
#include "support/temp_folder.h"
#include "support/zip_builder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

/// The zip and the folder that it is unpacked into, which holds files of an earlier zip.
class ZipExtractionTest : public ::testing::Test {
 protected:
  ZipExtractionTest() {
    for (const char* name : {"PRMS1234.DBF", "Hvcl1234.dbf", "Hvcl1234.cdx"})
      app_.Write(name, "old");
  }

  /// What went wrong, without the words that every text begins with.
  std::string FaultOf(const std::string& zip) const {
    const std::string path = disk_.Write("Clnt1234.zip", zip);
    const auto check = [](const std::string& name, const std::string& content) {
      if (content == "unfit") throw Failure(3274, name + " is unfit.");
    };
    const std::string text = ExtractZip({path, {"Hvcl1234", "Prms1234"}, app_.Path(), check});
    const std::string head = path + " could not be unpacked.\r";
    return text.starts_with(head) ? text.substr(head.size()) : text;
  }

  TempFolder disk_;
  TempFolder app_;
};

const char* const kOldFiles = "Hvcl1234.cdx=old|Hvcl1234.dbf=old|PRMS1234.DBF=old|";

const ZipMemberBytes kHvcl{"Hvcl1234.dbf", "new Hvcl"};
const ZipMemberBytes kPrms{"Prms1234.dbf", "new Prms"};

TEST(ZipNames, AreWantedWhenTheyAreFilesOfTheBaseNames) {
  const std::vector<std::string> bases{"Prms1234", "Hvcl1234"};
  for (const char* wanted : {"Prms1234.dbf", "PRMS1234.DBF", "hvcl1234.x", "Prms1234.a.b"}) {
    EXPECT_TRUE(IsWantedName(wanted, bases)) << wanted;
  }
  for (const char* other : {"", "Prms1234", "Prms1234.", "Prms1234.dbf ", "Prms12345.dbf",
                            ".Prms1234.dbf", "Glen1234.dbf", "/Prms1234.dbf", "../Prms1234.dbf",
                            "a\\Prms1234.dbf", "c:Prms1234.dbf", "Prms1234./x", "Prms1234.\\..\\x",
                            "Prms1234.dbf:hidden", "Prms1234.d*f", "Prms1234.d\nf"}) {
    EXPECT_FALSE(IsWantedName(other, bases)) << other;
  }
}

TEST_F(ZipExtractionTest, NewFilesTakeThePlacesOfOldOnesInAnyCase) {
  fs::create_directory(app_.Path(".ostrel-new"));
  app_.Write(".ostrel-new/Prms1234.fpt", "of a use that a power cut ended");
  EXPECT_EQ(FaultOf(ZipBuilder()
                        .Add(kPrms)
                        .Add({"../Prms1234.dbf", "evil"})
                        .Add({"old/Prms1234.cdx", "foldered"})
                        .Add({"Prin1234.mdb", "not wanted"})
                        .Add(kHvcl)
                        .Add({"Hvcl1234.FPT", ""})
                        .Bytes()),
            "");
  EXPECT_EQ(app_.Contents(),
            "Hvcl1234.FPT=|Hvcl1234.cdx=old|Hvcl1234.dbf=new Hvcl|Prms1234.dbf=new Prms|");
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

  const std::pair<std::string, const char*> cases[] = {
      {"", "Not a zip archive"},
      {good.substr(0, good.size() - 30), "Not a zip archive"},
      {ZipBuilder().Add({"x/Prms1234.dbf", "a"}).Add({"Prms1.dbf", "a"}).Bytes(),
       "It holds no tables of this client, or only in folders."},
      {with({"Prms1234.dbf", "new", 0100644, -1, 1}), "Prms1234.dbf: CRC error"},
      {with({"Prms1234.dbf", "new", 0100644, 2}), "Prms1234.dbf: Longer than the zip says"},
      {with({"Prms1234.dbf", "new", 0100644, 4}), "Prms1234.dbf: "},
      {with({"Prms1234.dbf", "encrypted", 0100644, -1, 0, 0, 1}), "Prms1234.dbf: No password"},
      {with({"Prms1234.dbf", "bomb", 0100644, (256 << 20) + 1}), "Prms1234.dbf is too large"},
      {flood.Bytes(), "Its files are too large to be payroll tables."},
      {swarm.Bytes(), "It holds more files than any client has tables."},
      {with({"HVCL1234.DBF", "again"}), "It holds HVCL1234.DBF twice."},
      {with({"Prms1234.lnk", "/etc/passwd", 0120777}), "Prms1234.lnk is no plain file."},
      {with({"Prms1234.dbf", "unfit"}), "Prms1234.dbf is unfit."},
  };
  for (const auto& [zip, fault] : cases) {
    EXPECT_THAT(FaultOf(zip), ::testing::StartsWith(fault));
    EXPECT_EQ(app_.Contents(), kOldFiles) << fault;
  }
  EXPECT_NE(ExtractZip({disk_.Path("none.zip"), {"Hvcl1234"}, app_.Path(), {}}), "");
}

TEST_F(ZipExtractionTest, EveryOldFileIsBackWhenTheDiskFails) {
  const ZipMemberBytes large{"Prms1234.fpt", std::string(100'000, 'm')};
  const std::string zip = ZipBuilder().Add(kHvcl).Add(kPrms).Add(large).Bytes();
  // A folder under the name of the last file to get its place: all others have theirs by then.
  fs::create_directory(app_.Path("Prms1234.fpt"));
  EXPECT_THAT(FaultOf(zip), ::testing::StartsWith("Path/File access error: "));
  fs::remove(app_.Path("Prms1234.fpt"));
  EXPECT_EQ(app_.Contents(), kOldFiles);
}

}  // namespace
}  // namespace ostrel
