#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>

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
      {"clnt1234.zip", "clnt1234.zip"}, {"CLNT1234.ZIP", "CLNT1234.ZIP"},
      {"Clnt1234.Zip", "CLNT1234.ZIP"}, {"CLNT0002.zip", "Clnt0002.zip"},
      {"Clnt9999.zip", nullptr},        {"Clnt4.zip", nullptr},
      {"none/Clnt0002.zip", nullptr},   {"", nullptr},
  };
  for (const auto& [asked, found] : paths) {
    EXPECT_EQ(Exist(folder.Path(asked)), found != nullptr) << asked;
    EXPECT_EQ(ExistingPath(folder.Path(asked)), folder.Path(found != nullptr ? found : asked));
  }
  // Many stars against a long name end quickly.
  folder.Write(std::string(250, 'a'), "");
  std::string pattern;
  for (int i = 0; i < 60; ++i) pattern += "a*";
  EXPECT_EQ(Listed(folder.Path(pattern)), std::string(250, 'a'));
  EXPECT_EQ(Listed(folder.Path(pattern + "b")), "");
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
  const std::string folder = ExecutableFolder();
  const std::string name = ExecutableBaseName();
  EXPECT_TRUE(Exist(folder + kPathSeparator + name));
  SetExecutable("/office", "OstrelPayroll");
  EXPECT_EQ(ExecutableFolder() + "|" + ExecutableBaseName(), "/office|OstrelPayroll");
  SetExecutable("", "");
  EXPECT_EQ(ExecutableFolder() + "|" + ExecutableBaseName(), folder + "|" + name);

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

/// "ab" as UTF-16 with its mark, low byte first.
std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (char c : ascii) bytes += std::string{c, '\0'};
  return bytes;
}

TEST(IniText, ReadsAKey) {
  const std::pair<std::string, std::string> cases[] = {
      {"\t[ s ]x\r \tk\t= v=w;x \t\r", "v=w;x"},
      {"[S]\nK=\" v \"\n", " v "},
      {"[S]\nK='v'\n", "v"},
      {"[S]\nK=\"\n", "\""},
      {"[S]\nK=first\nK=second\n[S]\nK=third", "first"},
      {"[S]\nK=\nK=second\n", ""},
      {"[T]\nK=other\n[S]\nL=x\n[T]\nK=v\n", ""},
      {"K=v\n[S\nK=v\n", ""},
      {"[S]\n;K=v\nKK=v\nK\n", ""},
      {"\xEF\xBB\xBF[S]\nK=Pe\u00F1a\n", "Pe\u00F1a"},
      {"[S]\nK=Pe\361a\n", "Pe\u00F1a"},
      {Utf16("[T]\r\n[S]\r\nK = v") + "\x3D\xD8\x00\xDE\x3D\xD8"s, "v\xF0\x9F\x98\x80\xEF\xBF\xBD"},
      {"\xFE\xFF\0[\0S\0]\0\n\0K\0=\x20\xAC\0"s, "\u20AC"},
  };
  for (const auto& [file, value] : cases) EXPECT_EQ(IniValueIn(file, "S", "K"), value) << file;
}

TEST(IniText, ChangesNothingButTheKey) {
  const struct {
    std::string Before;
    std::string Value;
    std::string After;
  } cases[] = {
      {"", "v", "[S]\r\nK=v\r\n"},
      {"; c\n[s]\n k =  old  \n[T]\nK=1", "new", "; c\n[s]\n k =  new\n[T]\nK=1"},
      {"[S]\nK=\nK=2\n", "v", "[S]\nK=v\nK=2\n"},
      {"[S]\nJ=1\n\n; T=1\n[T]\n", "v", "[S]\nJ=1\nK=v\n\n; T=1\n[T]\n"},
      {"rubbish\0\xFF\r\n"s, "v", "rubbish\0\xFF\r\n[S]\r\nK=v\r\n"s},
      {"[S]\nK=x\n", " v ", "[S]\nK=\" v \"\n"},
      {"[S]\nK=x\n", "v\r\n[T]", "[S]\nK=v\n"},
      {"[S]\nK=\xF1\n", "Pe\u00F1a", "[S]\nK=Pe\361a\n"},
      {"[S]\nK=\xF1\n", "\u2192", "[S]\nK=\u2192\n"},              // 1252 has no arrow
      {"[S]\nK=\xF1\n", "\u00C3\u00A9", "[S]\nK=\u00C3\u00A9\n"},  // would read as UTF-8
      {"\xEF\xBB\xBF[T]\n\xFF\n", "\u00F1", "\xEF\xBB\xBF[T]\n\xFF\n[S]\nK=\u00F1\n"},
      {"\xFE\xFF\0[\0S\0]\0\n"s, "\xF0\x9F\x98\x80",
       "\xFE\xFF\0[\0S\0]\0\n\0K\0=\xD8\x3D\xDE\x00\0\n"s},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(WithIniValue(c.Before, "S", "K", c.Value), c.After) << c.Before;
    EXPECT_EQ(IniValueIn(c.After, "S", "K"), c.Value.substr(0, c.Value.find('\r')));
  }
}

TEST(IniFile, IsMadeWithItsFolderReadBackAndLeftAloneByAFullDisk) {
  const TempFolder folder;
  const std::string path = folder.Path("config/Halvane.ini");
  EXPECT_EQ(ReadIniValue(path, "Ostrel Remote", "Comments"), "");
  EXPECT_TRUE(WriteIniValue(path, "Ostrel Remote", "Comments", "Crew#3"));
  EXPECT_EQ(ReadIniValue(path, "ostrel remote", "COMMENTS"), "Crew#3");
  const std::string whole = "config/|config/Halvane.ini=[Ostrel Remote]\r\nComments=Crew#3\r\n|";
  EXPECT_EQ(folder.Contents(), whole);
  {
    const FullDisk full(12);
    EXPECT_FALSE(WriteIniValue(path, "Ostrel Remote", "Comments", "Crew#4"));
  }
  EXPECT_FALSE(WriteIniValue(folder.Path("none/none/x.ini"), "S", "K", "v"));
  EXPECT_FALSE(WriteIniValue(folder.Path(), "S", "K", "v"));
  EXPECT_EQ(NumberOf([&] { ReadIniValue(folder.Path(), "S", "K"); }), 75);
  EXPECT_EQ(folder.Contents(), whole);

  std::string accents;
  for (int i = 0; i < 300; ++i) accents += "\u00F1";
  EXPECT_TRUE(WriteIniValue(path, "Ostrel Remote", "Comments", accents));
  EXPECT_EQ(LengthOf(ReadIniValue(path, "Ostrel Remote", "Comments")), 254u);
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
  EXPECT_EQ(NumberOf([&] { file.Close(); }), 52);
  file.Open(path);
  file.WriteLine("newer");
  file.Abandon();
  EXPECT_EQ(folder.Read("Pck-1234.asc"), "*1234, Pe\361a\r\n\r\n");
  EXPECT_EQ(folder.Count(), 4);
}

TEST(ReplacementFile, SaysAtOpenWhyItCannotBeMade) {
  const TempFolder folder;
  folder.Write("file", "");
  fs::create_symlink("loop", folder.Path("loop"));
  const std::pair<std::string, int> cases[] = {
      {folder.Path("none/x.asc"), 71},
      {folder.Path("file/x.asc"), 71},
      {"", 52},
      {folder.Path(), 75},
      {"/dev/null", 75},
      {folder.Path("loop"), 52},
  };
  for (const auto& [path, number] : cases) {
    ReplacementFile file;
    EXPECT_EQ(NumberOf([&, p = path] { file.Open(p); }), number) << path;
    EXPECT_EQ(NumberOf([&] { file.Open(folder.Path("good")); }), 0);
  }
  EXPECT_EQ(folder.Count(), 2);
}

TEST(AppendFile, OnlyGrows) {
  const TempFolder folder;
  const std::string path = folder.Write("Errors.Log", "Pe\361a ");
  AppendFile log;
  EXPECT_EQ(NumberOf([&] { log.Write("x"); }), 52);
  EXPECT_EQ(NumberOf([&] { log.Open(folder.Path("none/Errors.Log")); }), 76);
  EXPECT_EQ(NumberOf([&] { log.Open(folder.Path()); }), 75);
  log.Open(path);
  log.Write("again\u00F1\r\n");
  {
    const FullDisk full(16);
    EXPECT_EQ(NumberOf([&] { log.Write("a record too long"); }), 61);
  }
  EXPECT_EQ(folder.Read("Errors.Log"), "Pe\361a again\361\r\n");
  log.Write("now");
  log.Close();
  EXPECT_EQ(folder.Read("Errors.Log"), "Pe\361a again\361\r\nnow");
}

}  // namespace
}  // namespace ostrel
