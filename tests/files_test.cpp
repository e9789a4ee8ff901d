#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "platform/files/files.h"
#include "platform/files/ini_file.h"
#include "platform/files/ini_text.h"
#include "platform/files/text_encoding.h"
#include "platform/files/text_output.h"
#include "platform/files/zip_extraction.h"
#include "platform/values/calendar.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"
#include "platform/values/value.h"
#include "support/failure_number.h"
#include "support/full_disk.h"
#include "support/odd_files.h"
#include "support/temp_folder.h"
#include "support/zip_builder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;  // for texts with NULs

std::string Listed(const std::string& pattern) {
  std::string names;
  for (const std::string& name : ListFiles(pattern)) names += (names.empty() ? "" : " ") + name;
  return names;
}

TEST(Files, MatchNamesWithoutRegardToCase) {
  const TempFolder folder;
  for (const char* name : {"CLNT1234.ZIP", "Clnt0002.zip", "clnt1234.zip", "Clnt.zip.old", "a*b",
                           "aXXb", "Pe\u00F1a.zip"}) {
    folder.Write(name, "");
  }
  fs::create_directory(folder.Path("Clnt9999.zip"));
  fs::create_symlink("Clnt0002.zip", folder.Path("Clnt3.zip"));
  fs::create_symlink("nowhere", folder.Path("Clnt4.zip"));

  const std::pair<const char*, const char*> listings[] = {
      {"Clnt*.zip", "Clnt0002.zip CLNT1234.ZIP clnt1234.zip Clnt3.zip"},
      {"clnt????.ZIP", "Clnt0002.zip CLNT1234.ZIP clnt1234.zip"},
      {"pe?a.zip", "Pe\u00F1a.zip"},
      {"a*b", "a*b aXXb"},
      {"*zip*old*", "Clnt.zip.old"},
      {"none/Clnt*.zip", "!52"},
      {"Clnt0002.zip/*", "!52"},
  };
  for (const auto& [pattern, names] : listings) {
    EXPECT_EQ(OutcomeOf([&, p = pattern] { return Listed(folder.Path(p)); }), names) << pattern;
  }
  const std::pair<const char*, const char*> paths[] = {
      {"clnt1234.zip", "clnt1234.zip"}, {"Clnt1234.Zip", "CLNT1234.ZIP"},
      {"CLNT0002.zip", "Clnt0002.zip"}, {"Clnt9999.zip", nullptr},
      {"Clnt4.zip", nullptr},           {"none/Clnt0002.zip", nullptr},
  };
  for (const auto& [asked, found] : paths) {
    EXPECT_EQ(Exist(folder.Path(asked)), found != nullptr) << asked;
    EXPECT_EQ(ExistingPath(folder.Path(asked)), folder.Path(found != nullptr ? found : asked));
  }
  folder.Write(std::string(250, 'a'), "");
  std::string stars;
  for (int i = 0; i < 60; ++i) stars += "a*";
  EXPECT_EQ(Listed(folder.Path(stars)), std::string(250, 'a'));
  EXPECT_EQ(Listed(folder.Path(stars + "b")), "") << "and at once";
}

TEST(Files, AreOpenedWhenTheyArePlainFilesAndNeverWaitedFor) {
  const TempFolder folder;
  const std::string path = folder.Path("Halvane.ini");
  for (const std::string kind : kOddFiles) {
    SCOPED_TRACE(kind);
    PutOddFile(kind, path);
    const fs::file_type before = fs::symlink_status(path).type();
    EXPECT_FALSE(Exist(path));
    EXPECT_TRUE(IsTaken(folder.Path("HALVANE.ini")));
    EXPECT_EQ(NumberOf([&] { ReadIniValue(path, "S", "K"); }), 75);
    EXPECT_FALSE(WriteIniValue(path, "S", "K", "v"));
    EXPECT_EQ(NumberOf([&] { AppendFile().Open(path); }), kind == "unmounted/x" ? 76 : 75);
    EXPECT_EQ(fs::symlink_status(path).type(), before);
  }
  EXPECT_FALSE(IsTaken(folder.Path("none")));
  fs::remove(path);
  WriteIniValue(path, "S", "K", "v");
  fs::resize_file(path, 1U << 30);
  EXPECT_EQ(NumberOf([&] { ReadIniValue(path, "S", "K"); }), 75) << "larger than any settings";
}

TEST(Files, TellWhenAFileWasChangedInLocalTime) {
  setenv("TZ", "XYZ5", 1);  // five hours west of Greenwich
  tzset();
  const TempFolder folder;
  const timespec noon{1087214400, 0};  // in Greenwich, 14 June 2004
  const timespec both[] = {noon, noon};
  ASSERT_EQ(utimensat(AT_FDCWD, folder.Write("Program.exe", "").c_str(), both, 0), 0);
  EXPECT_DOUBLE_EQ(LastModified(folder.Path("PROGRAM.EXE")).Days,
                   *DayNumber(2004, 6, 14) + 7 / 24.0);
  EXPECT_EQ(NumberOf([&] { LastModified(folder.Path("none")); }), 53);
  unsetenv("TZ");
  tzset();
}

TEST(Files, ExecutableAndConfigurationLieWhereTheSystemSays) {
  EXPECT_TRUE(Exist(ExecutableFolder() + kPathSeparator + ExecutableBaseName()));
  setenv("HOME", "/home/foreman", 1);
  for (const char* configured : {"/conf", "relative", ""}) {
    setenv("XDG_CONFIG_HOME", configured, 1);
    EXPECT_EQ(ConfigurationFolder(), *configured == '/' ? "/conf" : "/home/foreman/.config");
  }
}

TEST(CodePage, GoesThereAndBack) {
  EXPECT_EQ(ToCodePage1252("Pe\u00F1a \u20AC\u2019\u00FF\xC2\x81\0"s),
            "Pe\361a \x80\x92\xFF\x81\0"s);
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(ToCodePage1252(FromCodePage1252(all)), all);

  const std::pair<const char*, const char*> lacking[] = {
      {"\xF0\x9F\x98\x80", "?"},           // a face
      {"a\xF1o", "a?o"},                   // 1252 already
      {"\xE0\x80\x80", "???"},             // overlong
      {"\xED\xA0\x80", "???"},             // half of a pair
      {"\xF4\x90\x80\x80", "????"},        // beyond the last character
      {"\xE2\x82\xE2\x82\xAC", "??\x80"},  // cut off, then whole
  };
  for (const auto& [text, bytes] : lacking) EXPECT_EQ(ToCodePage1252(text), bytes);
}

TEST(IniText, ReadsAKey) {
  const std::pair<std::string, std::string> cases[] = {
      {"\t[ s ]x\r \tk\t= v=w;x \t\r", "v=w;x"},
      {"[S]\nK=\" v \"\n", " v "},
      {"[S]\nK='v'\n", "v"},
      {"[S]\nK=\"\n", "\""},
      {"K=v\n[S\nK=v\n[S]\n;K=v\nKK=v\nK\n", ""},
      {"\xEF\xBB\xBF[S]\nK=Pe\u00F1a\n", "Pe\u00F1a"},
      {"\xFE\xFF\0[\0S\0]\0\n\0K\0=\x20\xAC\xD8\x3D\0"s, "\u20AC\xEF\xBF\xBD"},
  };
  for (const auto& [file, value] : cases) EXPECT_EQ(IniValueIn(file, "S", "K"), value) << file;
}

TEST(IniText, ChangesNothingButTheKey) {
  const struct {
    std::string Before, Value, After;
  } cases[] = {
      {"", "v", "[S]\r\nK=v\r\n"},
      {"; c\n[s]\n k =  old  \n[T]\nK=1", "new", "; c\n[s]\n k =  new\n[T]\nK=1"},
      {"[S]\nJ=1\n\n; T=1\n[T]\n", "v", "[S]\nJ=1\nK=v\n\n; T=1\n[T]\n"},
      {"[S]\nK=x\n", " v ", "[S]\nK=\" v \"\n"},
      {"[S]\nK=x\n", "v\r\n[T]", "[S]\nK=v\n"},
      {"[S]\nK=\xF1\n", "Pe\u00F1a", "[S]\nK=Pe\361a\n"},
      {"[S]\nK=\xF1\n", "\u2192", "[S]\nK=\u2192\n"},              // 1252 has no arrow
      {"[S]\nK=\xF1\n", "\u00C3\u00A9", "[S]\nK=\u00C3\u00A9\n"},  // would read as UTF-8
      {"\xFE\xFF\0[\0S\0]\0\n"s, "\u20AC", "\xFE\xFF\0[\0S\0]\0\n\0K\0=\x20\xAC\0\n"s},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(WithIniValue(c.Before, "S", "K", c.Value), c.After) << c.Before;
    EXPECT_EQ(IniValueIn(c.After, "S", "K"), c.Value.substr(0, c.Value.find('\r')));
  }
}

TEST(IniFile, IsMadeWithItsFolderAndReadBack) {
  const TempFolder folder;
  const std::string path = folder.Path("config/Halvane.ini");
  EXPECT_EQ(ReadIniValue(path, "S", "Comments"), "");
  EXPECT_TRUE(WriteIniValue(path, "S", "Comments", std::string(300, '\xF1')));
  EXPECT_EQ(LengthOf(ReadIniValue(path, "s", "COMMENTS")), 254U);
  EXPECT_FALSE(WriteIniValue(folder.Path("none/none/x.ini"), "S", "K", "v"));
  EXPECT_FALSE(WriteIniValue(folder.Path(), "S", "K", "v"));
  EXPECT_EQ(NumberOf([&] { ReadIniValue(folder.Path(), "S", "K"); }), 75);
}

TEST(ReplacementFile, TakesThePlaceOfTheOldOneAtClose) {
  const TempFolder folder;
  const std::string path = folder.Write("Pck-1234.asc", "old");
  fs::permissions(path, fs::perms::owner_all);
  for (const auto& [to, name] : {std::pair("Pck-1234.asc", "link"), {"new", "hanging"}}) {
    fs::create_symlink(to, folder.Path(name));
  }
  ReplacementFile file;
  file.Open(folder.Path("link"));
  EXPECT_EQ(NumberOf([&] { file.Open(path); }), 55);
  file.WriteLine("*1234, Pe\u00F1a");
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "old");
  file.Close();
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "*1234, Pe\361a\r\n");
  EXPECT_TRUE(fs::is_symlink(folder.Path("link")));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);

  file.Open(folder.Path("hanging"));
  file.Close();
  EXPECT_TRUE(fs::is_regular_file(folder.Path("new")));
  EXPECT_EQ(NumberOf([&] { file.Close(); }), 52);
  file.Open(path);
  file.WriteLine("newer");
  file.Abandon();
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "*1234, Pe\361a\r\n");

  fs::create_symlink("loop", folder.Path("loop"));
  const std::pair<std::string, int> refusals[] = {
      {folder.Path("none/x"), 71}, {path + "/x", 71}, {"", 52},
      {folder.Path(), 75},         {"/dev/null", 75}, {folder.Path("loop"), 52}};
  for (const auto& [place, number] : refusals) {
    EXPECT_EQ(NumberOf([&, to = place] { file.Open(to); }), number) << place;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 5);
}

TEST(AppendFile, OnlyGrows) {
  const TempFolder folder;
  const std::string path = folder.Write("Errors.Log", "Pe\361a ");
  fs::permissions(path, fs::perms(0644));
  AppendFile log;
  log.Open(path);
  EXPECT_EQ(static_cast<int>(fs::status(path).permissions()), 0600);
  log.Write("again\u00F1\r\n");
  {
    const FullDisk full(16);
    EXPECT_EQ(NumberOf([&] { log.Write("a record too long"); }), 61);
  }
  log.Write("now");
  log.Close();
  EXPECT_EQ(folder.Read("Errors.Log"), "Pe\361a again\361\r\nnow");
}

/// The zip and the folder that it is unpacked into, which holds files of an earlier zip.
class ZipExtractionTest : public testing::Test {
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

const ZipMemberBytes kHvcl{"Hvcl1234.dbf", "new Hvcl"};
const ZipMemberBytes kPrms{"Prms1234.dbf", "new Prms"};

TEST(ZipNames, AreWantedWhenTheyAreFilesOfTheBaseNames) {
  const std::vector<std::string> bases{"Prms1234", "Hvcl1234"};
  for (const char* wanted : {"Prms1234.dbf", "PRMS1234.DBF", "hvcl1234.x", "Prms1234.a.b"}) {
    EXPECT_TRUE(IsWantedName(wanted, bases)) << wanted;
  }
  for (const char* other : {"", "Prms1234", "Prms1234.", "Prms1234.dbf ", "Prms12345.dbf",
                            ".Prms1234.dbf", "../Prms1234.dbf", "a\\Prms1234.dbf", "Prms1234.d\nf",
                            "Prms1234.\\..\\x", "Prms1234.d*f", "Prms1234.dbf:hidden"}) {
    EXPECT_FALSE(IsWantedName(other, bases)) << other;
  }
}

TEST_F(ZipExtractionTest, NewFilesTakeThePlacesOfOldOnesInAnyCase) {
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
}

TEST_F(ZipExtractionTest, AZipInAZipIsAFileLikeAnyOther) {
  const std::string inner = ZipBuilder().Add({"Prms1234.cdx", "its own"}).Bytes();
  const auto with = [&](const std::string& name, const std::string& content) {
    return FaultOf(ZipBuilder().Add(kHvcl).Add({name, content}).Add(kPrms).Bytes());
  };
  EXPECT_EQ(with("backup.zip", inner), "");
  EXPECT_EQ(with("HVCL1234.BAK", inner + inner), "");
  // Of a file that the directory does not have nobody knows where it ends.
  std::string lost = ZipBuilder().Add({"other.zip", inner}).Add(kHvcl).Bytes();
  lost[lost.rfind("other.zip")] = 'O';
  EXPECT_THAT(FaultOf(lost), testing::StartsWith("Its directory is damaged: Prms1234.cdx"));
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
    EXPECT_THAT(FaultOf(zip), testing::StartsWith(fault));
    EXPECT_EQ(app_.Contents(), "Hvcl1234.cdx=old|Hvcl1234.dbf=old|PRMS1234.DBF=old|") << fault;
  }
  EXPECT_NE(ExtractZip({disk_.Path("none.zip"), {"Hvcl1234"}, app_.Path(), {}}), "");
}

}  // namespace
}  // namespace ostrel
