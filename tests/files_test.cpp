#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>

#include "platform/failure.h"
#include "platform/files/files.h"
#include "platform/files/ini_file.h"
#include "platform/files/ini_text.h"
#include "platform/files/text_output.h"
#include "platform/values/dates.h"
#include "platform/values/text.h"
#include "support/failure_number.h"
#include "support/full_disk.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;  // for texts with NULs

std::string Joined(const std::vector<std::string>& names) {
  std::string joined;
  for (const std::string& name : names) joined += (joined.empty() ? "" : " ") + name;
  return joined;
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

  const struct {
    const char* Pattern;
    const char* Names;
  } listings[] = {
      {"Clnt*.zip", "Clnt0002.zip CLNT1234.ZIP clnt1234.zip Clnt3.zip"},
      {"clnt????.ZIP", "Clnt0002.zip CLNT1234.ZIP clnt1234.zip"},
      {"pe?a.zip", "Pe\u00F1a.zip"},
      {"a*b", "a*b aXXb"},
      {"*zip*old*", "Clnt.zip.old"},
      {"Clnt", ""},
      {"", ""},
  };
  for (const auto& c : listings) {
    EXPECT_EQ(Joined(ListFiles(folder.Path(c.Pattern))), c.Names) << c.Pattern;
  }

  const struct {
    const char* Asked;
    const char* Found;
  } paths[] = {
      {"clnt1234.zip", "clnt1234.zip"}, {"CLNT1234.ZIP", "CLNT1234.ZIP"},
      {"Clnt1234.Zip", "CLNT1234.ZIP"}, {"CLNT0002.zip", "Clnt0002.zip"},
      {"Clnt9999.zip", nullptr},        {"Clnt4.zip", nullptr},
      {"CLNT9999.ZIP", nullptr},        {"none/Clnt0002.zip", nullptr},
      {"Clnt0002.zip/x", nullptr},      {"", nullptr},
  };
  for (const auto& c : paths) {
    SCOPED_TRACE(c.Asked);
    EXPECT_EQ(Exist(folder.Path(c.Asked)), c.Found != nullptr);
    EXPECT_EQ(ExistingPath(folder.Path(c.Asked)), folder.Path(c.Found ? c.Found : c.Asked));
  }
  EXPECT_EQ(NumberOf([&] { ListFiles(folder.Path("none/Clnt*.zip")); }), 52);
  EXPECT_EQ(NumberOf([&] { ListFiles(folder.Path("Clnt0002.zip/*")); }), 52);
}

TEST(Files, ManyStarsAgainstALongNameEndQuickly) {
  const TempFolder folder;
  folder.Write(std::string(250, 'a'), "");
  std::string pattern;
  for (int i = 0; i < 60; ++i) pattern += "a*";
  EXPECT_EQ(ListFiles(folder.Path(pattern)).size(), 1u);
  EXPECT_TRUE(ListFiles(folder.Path(pattern + "b")).empty());
}

/// An environment variable of this process, put back afterwards.
class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    setenv(name, value, 1);
    tzset();  // the clock's conversions look at TZ once only
  }
  ~Environment() {
    before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_);
    tzset();
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

TEST(Files, TellWhenAFileWasChangedInLocalTime) {
  const Environment westOfGreenwich("TZ", "XYZ5");
  const TempFolder folder;
  const timespec noon{1087214400, 0};  // in the zone of Greenwich, 14 June 2004
  const timespec both[] = {noon, noon};
  ASSERT_EQ(utimensat(AT_FDCWD, folder.Write("Program.exe", "").c_str(), both, 0), 0);
  EXPECT_DOUBLE_EQ(LastModified(folder.Path("PROGRAM.EXE")).Days,
                   *DayNumber(2004, 6, 14) + 7 / 24.0);
  EXPECT_EQ(NumberOf([&] { LastModified(folder.Path("none")); }), 53);
}

TEST(Files, TheExecutableIsTheRunningOneUnlessSet) {
  const std::string folder = ExecutableFolder();
  const std::string name = ExecutableBaseName();
  EXPECT_TRUE(Exist(folder + kPathSeparator + name));
  SetExecutable("/office", "OstrelPayroll");
  EXPECT_EQ(ExecutableFolder() + "|" + ExecutableBaseName(), "/office|OstrelPayroll");
  SetExecutable("", "");
  EXPECT_EQ(ExecutableFolder() + "|" + ExecutableBaseName(), folder + "|" + name);
}

TEST(Files, ConfigurationFollowsTheDesktopsStandard) {
  const Environment home("HOME", "/home/foreman");
  const struct {
    const char* Configured;
    const char* Folder;
  } cases[] = {
      {"/conf", "/conf"}, {"relative", "/home/foreman/.config"}, {"", "/home/foreman/.config"}};
  for (const auto& c : cases) {
    const Environment configured("XDG_CONFIG_HOME", c.Configured);
    EXPECT_EQ(ConfigurationFolder(), c.Folder);
  }
}

TEST(CodePage, GoesThereAndBack) {
  const struct {
    std::string Text;
    std::string Bytes;
  } cases[] = {
      {"Crew#2", "Crew#2"},
      {"Pe\u00F1a \xE2\x82\xAC", "Pe\361a \x80"},
      {"\xE2\x80\x99\xC5\xB8\xC3\xBF\xC2\xA0", "\x92\x9F\xFF\xA0"},
      {"\xC2\x81", "\x81"},  // stands for no letter
      {"\0\x7F"s, "\0\x7F"s},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ToCodePage1252(c.Text), c.Bytes);
    EXPECT_EQ(FromCodePage1252(c.Bytes), c.Text);
  }
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(ToCodePage1252(FromCodePage1252(all)), all);

  const struct {
    std::string Text;
    const char* Bytes;
  } lacking[] = {
      {"\xE2\x86\x92", "?"},               // an arrow
      {"\xF0\x9F\x98\x80", "?"},           // a face
      {"\xC2\x80", "?"},                   // a control that has no byte
      {"a\xF1o", "a?o"},                   // 1252 already
      {"\xC3", "?"},                       // cut off
      {"\xC0\x80", "??"},                  // overlong
      {"\xED\xA0\x80", "???"},             // half of a pair
      {"\xF4\x90\x80\x80", "????"},        // beyond the last character
      {"\xE2\x82\xE2\x82\xAC", "??\x80"},  // cut off, then whole
  };
  for (const auto& c : lacking) EXPECT_EQ(ToCodePage1252(c.Text), c.Bytes);
}

/// "ab" as UTF-16 with its mark, low byte first.
std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (char c : ascii) bytes += std::string{c, '\0'};
  return bytes;
}

TEST(IniText, ReadsAKey) {
  const struct {
    std::string File;
    std::string Value;
  } cases[] = {
      {"[S]\r\nK=v\r\n", "v"},
      {"[s]\nk = v \t\n", "v"},
      {"\t[ S ]x\r \tK\t=v=w;x\r", "v=w;x"},
      {"[S]\nK=a:\\", "a:\\"},
      {"[S]\nK=\" v \"\n", " v "},
      {"[S]\nK='v'\n", "v"},
      {"[S]\nK=\"v'\n", "\"v'"},
      {"[S]\nK=\"\n", "\""},
      {"[S]\nK=first\nK=second\n[S]\nK=third", "first"},
      {"[S]\nK=\nK=second\n", ""},
      {"[T]\nK=other\n[S]\nL=x\n[T]\nK=v\n", ""},
      {"K=v\n[S\nK=v\n", ""},
      {"[S]\n;K=v\nKK=v\nK\n", ""},
      {"[T]\n[S]\n[S]\nK=v", ""},
      {"", ""},
      {"\xEF\xBB\xBF[S]\nK=Pe\u00F1a\n", "Pe\u00F1a"},
      {"[S]\nK=Pe\361a\n", "Pe\u00F1a"},
      {"\xFF[S]\n[S]\0\nK=v\0w"s, "v\0w"s},
      {Utf16("[T]\r\n[S]\r\nK = v\r\n"), "v"},
      {Utf16("[S]\nK=v") + "\x3D\xD8\x00\xDE\x3D\xD8"s, "v\xF0\x9F\x98\x80\xEF\xBF\xBD"},
      {"\xFE\xFF\0[\0S\0]\0\n\0K\0=\x20\xAC\0"s, "\xE2\x82\xAC"},
      {"[S]\nK=" + std::string(1 << 20, 'v'), std::string(1 << 20, 'v')},
  };
  for (const auto& c : cases) EXPECT_EQ(IniValueIn(c.File, "S", "K"), c.Value) << c.File;
}

TEST(IniText, ChangesNothingButTheKey) {
  const struct {
    std::string Before;
    std::string Value;
    std::string After;
  } cases[] = {
      {"", "v", "[S]\r\nK=v\r\n"},
      {"[S]\r\nK=old\r\nL=1\r\n", "new", "[S]\r\nK=new\r\nL=1\r\n"},
      {"; c\n[s]\n k =  old  \n[T]\nK=1", "new", "; c\n[s]\n k =  new\n[T]\nK=1"},
      {"[S]\rK=old", "a:\\", "[S]\rK=a:\\"},
      {"[S]\nK=\nK=2\n", "v", "[S]\nK=v\nK=2\n"},
      {"[S]\nJ=1\n\n; of T\n[T]\n", "v", "[S]\nJ=1\nK=v\n\n; of T\n[T]\n"},
      {"[S]\n[S]\nK=2", "v", "[S]\nK=v\n[S]\nK=2"},
      {"[S]", "v", "[S]\r\nK=v\r\n"},
      {"[T]\nK=1", "v", "[T]\nK=1\n[S]\nK=v\n"},
      {"rubbish\0\xFF\r\n"s, "v", "rubbish\0\xFF\r\n[S]\r\nK=v\r\n"s},
      {"[S]\nK=x\n", " v ", "[S]\nK=\" v \"\n"},
      {"[S]\nK=x\n", "'v'", "[S]\nK=\"'v'\"\n"},
      {"[S]\nK=x\n", "v\r\n[T]", "[S]\nK=v\n"},
      {"[S]\nK=x\n", "", "[S]\nK=\n"},
      {"[S]\nK=x\n", "Pe\u00F1a", "[S]\nK=Pe\u00F1a\n"},
      {"[S]\nK=\xF1\n", "Pe\u00F1a", "[S]\nK=Pe\361a\n"},
      {"[S]\nK=\xF1\n", "\xE2\x86\x92", "[S]\nK=\xE2\x86\x92\n"},          // 1252 has no arrow
      {"[S]\nK=\xF1\n", "\xC3\x83\xC2\xA9", "[S]\nK=\xC3\x83\xC2\xA9\n"},  // would read as UTF-8
      {"\xEF\xBB\xBF[T]\n\xFF\n", "\u00F1", "\xEF\xBB\xBF[T]\n\xFF\n[S]\nK=\u00F1\n"},
      {Utf16("[S]\nK=x\nL=1"), "vw", Utf16("[S]\nK=vw\nL=1")},
      {Utf16("[T]\n") + "\x3D\xD8\x41", "v",
       Utf16("[T]\n") + "\x3D\xD8" + Utf16("\n[S]\nK=v\n").substr(2) + "\x41"},
      {"\xFE\xFF\0[\0S\0]\0\n"s, "\xF0\x9F\x98\x80",
       "\xFE\xFF\0[\0S\0]\0\n\0K\0=\xD8\x3D\xDE\x00\0\n"s},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Before);
    EXPECT_EQ(WithIniValue(c.Before, "S", "K", c.Value), c.After);
    EXPECT_EQ(IniValueIn(c.After, "S", "K"), c.Value.substr(0, c.Value.find('\r')));
    EXPECT_EQ(WithIniValue(c.After, "S", "K", c.Value), c.After);
  }
}

TEST(IniFile, IsMadeWithItsFolderAndReadBack) {
  const TempFolder folder;
  const std::string path = folder.Path("config/Halvane.ini");
  EXPECT_EQ(ReadIniValue(path, "Ostrel Remote", "Comments"), "");
  EXPECT_TRUE(WriteIniValue(path, "Ostrel Remote", "Comments", "Crew#3"));
  EXPECT_EQ(ReadIniValue(path, "ostrel remote", "COMMENTS"), "Crew#3");
  EXPECT_EQ(folder.Read("config/Halvane.ini"), "[Ostrel Remote]\r\nComments=Crew#3\r\n");

  std::string accents;
  for (int i = 0; i < 300; ++i) accents += "\u00F1";
  EXPECT_TRUE(WriteIniValue(path, "Ostrel Remote", "Comments", accents));
  EXPECT_EQ(LengthOf(ReadIniValue(path, "Ostrel Remote", "Comments")), 254u);
}

TEST(IniFile, ThatCannotBeWrittenStaysAsItWas) {
  const TempFolder folder;
  EXPECT_FALSE(WriteIniValue(folder.Path("none/none/x.ini"), "S", "K", "v"));
  EXPECT_FALSE(WriteIniValue(folder.Path(), "S", "K", "v"));
  EXPECT_EQ(NumberOf([&] { ReadIniValue(folder.Path(), "S", "K"); }), 75);

  const std::string path = folder.Write("x.ini", "[S]\nK=old\n");
  const FullDisk full(12);
  EXPECT_FALSE(WriteIniValue(path, "S", "K", "much longer"));
  EXPECT_EQ(folder.Read("x.ini"), "[S]\nK=old\n");
  EXPECT_EQ(folder.Count(), 1);
}

TEST(ReplacementFile, TakesThePlaceOfTheOldOneAtClose) {
  const TempFolder folder;
  const std::string path = folder.Write("Pck-1234.asc", "old");
  fs::permissions(path, fs::perms::owner_all);
  fs::create_symlink("Pck-1234.asc", folder.Path("link"));
  fs::create_symlink("new.asc", folder.Path("dangling"));

  ReplacementFile file;
  file.Open(folder.Path("link"));
  EXPECT_EQ(NumberOf([&] { file.Open(path); }), 55);
  file.WriteLine("*1234, Pe\u00F1a");
  file.WriteLine("");
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "old");
  file.Close();
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "*1234, Pe\361a\r\n\r\n");
  EXPECT_TRUE(fs::is_symlink(folder.Path("link")));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);

  file.Open(folder.Path("dangling"));
  file.Close();
  EXPECT_TRUE(fs::is_regular_file(folder.Path("new.asc")));
  EXPECT_EQ(NumberOf([&] { file.WriteLine("x"); }), 52);
  EXPECT_EQ(NumberOf([&] { file.Close(); }), 52);
  EXPECT_EQ(folder.Count(), 4);
}

TEST(ReplacementFile, SaysAtOpenWhyItCannotBeMade) {
  const TempFolder folder;
  folder.Write("file", "");
  fs::create_symlink("loop", folder.Path("loop"));
  const struct {
    std::string Path;
    int Number;
  } cases[] = {
      {folder.Path("none/x.asc"), 71},
      {folder.Path("file/x.asc"), 71},
      {"", 52},
      {folder.Path(), 75},
      {"/dev/null", 75},
      {"/sys/x.asc", 75},
      {folder.Path("loop"), 52},
  };
  for (const auto& c : cases) {
    ReplacementFile file;
    EXPECT_EQ(NumberOf([&] { file.Open(c.Path); }), c.Number) << c.Path;
    EXPECT_EQ(NumberOf([&] { file.Open(folder.Path("good")); }), 0);
  }
  EXPECT_EQ(folder.Count(), 2);
}

TEST(ReplacementFile, LeavesTheOldFileUntilCloseSucceeds) {
  const TempFolder folder;
  const std::string path = folder.Write("Pck-1234.asc", "old");
  {
    ReplacementFile dropped;
    dropped.Open(path);
    dropped.WriteLine("new");
  }
  ReplacementFile file;
  file.Open(path);
  file.WriteLine("new");
  file.Abandon();
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "old");

  file.Open(path);
  file.WriteLine("a line of some length");
  {
    const FullDisk full(10);
    EXPECT_EQ(NumberOf([&] { file.Close(); }), 61);
  }
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "old");
  EXPECT_EQ(folder.Count(), 1);
  fs::rename(folder.Path(), folder.Path() + "-away");
  EXPECT_EQ(NumberOf([&] { file.Close(); }), 71);
  fs::rename(folder.Path() + "-away", folder.Path());
  file.WriteLine("more");
  file.Close();
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "a line of some length\r\nmore\r\n");
}

TEST(AppendFile, OnlyGrows) {
  const TempFolder folder;
  const std::string path = folder.Path("Errors.Log");
  for (const char* text : {"Pe\u00F1a", " again\r\n"}) {
    AppendFile log;
    log.Open(path);
    log.Write(text);
  }
  EXPECT_EQ(folder.Read("Errors.Log"), "Pe\361a again\r\n");

  AppendFile log;
  EXPECT_EQ(NumberOf([&] { log.Write("x"); }), 52);
  EXPECT_EQ(NumberOf([&] { log.Open(folder.Path("none/Errors.Log")); }), 76);
  EXPECT_EQ(NumberOf([&] { log.Open(folder.Path()); }), 75);
  log.Open(path);
  {
    const FullDisk full(16);
    EXPECT_EQ(NumberOf([&] { log.Write("a record too long"); }), 61);
  }
  EXPECT_EQ(folder.Read("Errors.Log"), "Pe\361a again\r\n");
  log.Write("now");
  log.Close();
  EXPECT_EQ(folder.Read("Errors.Log"), "Pe\361a again\r\nnow");
}

}  // namespace
}  // namespace ostrel
