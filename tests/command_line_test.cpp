// How the program is started: the words behind its name, and the folder that it works in.

#include "program/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "frame/app_state.h"
#include "frame/ini_keys.h"
#include "platform/files/files.h"
#include "platform/files/user_folders.h"
#include "support/payroll.h"

namespace ostrel {

namespace {

namespace fs = std::filesystem;

// "work", "work in x", "documents", or the first line that is said or refused with.
std::string Understood(const std::vector<std::string>& words) {
  const CommandLine command = ReadCommandLine(words);
  const std::string line = command.Text.substr(0, command.Text.find('\n'));
  if (command.What == CommandLine::Kind::Refuse) return "refused: " + line;
  if (command.What == CommandLine::Kind::Say) return "says: " + line;
  if (command.Documents) return "documents";
  return command.Folder.empty() ? "work" : "work in " + command.Folder;
}

TEST(CommandLine, TakesAFolderOrSaysSomethingOrRefuses) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, "work"},
      {{"--folder", "a b"}, "work in a b"},
      {{"--folder=/x=y"}, "work in /x=y"},
      {{"--folder", "--version"}, "work in --version"},
      {{"--documents"}, "documents"},
      {{"--version"}, "says: Ostrel Payroll " + std::string(OSTREL_VERSION)},
      {{"--folder", "x", "--help"}, "says: usage: OstrelPayroll [--folder <path> | --documents]"},
      {{"--folder"}, "refused: OstrelPayroll: no folder behind --folder"},
      {{"--folder", ""}, "refused: OstrelPayroll: no folder behind --folder"},
      {{"--folder="}, "refused: OstrelPayroll: no folder behind --folder"},
      {{"--folders", "x"}, "refused: OstrelPayroll: unknown option --folders"},
      {{"--fast", "--version"}, "refused: OstrelPayroll: unknown option --fast"},
      {{"-v"}, "refused: OstrelPayroll: unknown option -v"},
      {{""}, "refused: OstrelPayroll: unknown option "},
      {{"Prin1234.mdb"}, "refused: OstrelPayroll: unknown option Prin1234.mdb"},
      {{"--documents", "--folder", "x"},
       "refused: OstrelPayroll: --folder and --documents name two folders"},
  };
  for (const auto& [words, understood] : cases) EXPECT_EQ(Understood(words), understood);
}

TEST(CommandLine, WorksInTheFolderGivenWhereverTheProgramLies) {
  RunningPayroll payroll;
  payroll.Stop();
  fs::rename(payroll.App(), payroll.Folder.Path("crew two"));
  fs::create_directory(payroll.App());
  const std::string folder = payroll.Folder.Path("crew two");
  for (const std::string& spelled : {folder, folder + "/", folder + "/../crew two"}) {
    CommandLine command;
    command.Folder = spelled;
    EXPECT_EQ(UseFolder(command), "");
    payroll.Start();
    EXPECT_EQ(DataPath, folder);
    payroll.Save("130");
    payroll.Stop();
  }
  EXPECT_TRUE(fs::is_empty(payroll.App()));
  payroll.Start();
  EXPECT_EQ(payroll.Lines(), "130 I 10:42 am|130 I 10:42 am|130 I 10:42 am");
  SetApplicationFolder({});
}

TEST(CommandLine, RefusesAFolderThatIsNotThere) {
  const TempFolder folder;
  const std::string file = folder.Write("file", "");
  for (const std::string& path : {folder.Path("slip"), file}) {
    CommandLine command;
    command.Folder = path;
    EXPECT_EQ(UseFolder(command), path + " is not there, or is no folder.");
    EXPECT_FALSE(fs::is_directory(path));
    EXPECT_EQ(ApplicationFolder(), ExecutableFolder());
  }
}

#ifndef _WIN32
TEST(OwnSettings, TakeWhatTheOfficesFileRefusesAndAreReadFirst) {
  const TempFolder laptop;
  const std::string refusing = laptop.Write("system", "a file, so that no file can be made in it");
  const auto officesIn = [](const std::string& folder) {
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
  };
  fs::create_directory(laptop.Path("writable"));
  laptop.Write("writable/Halvane.ini", "[Ostrel Remote]\nKey=office\nOther=office\n");
  SetOwnSettingsFolder(laptop.Path("own"));

  officesIn(laptop.Path("writable"));
  EXPECT_EQ(IniRead(kIniSection, "Key"), "office");
  IniWrite(kIniSection, "Key", "changed");
  EXPECT_FALSE(fs::exists(laptop.Path("own")));

  officesIn(refusing);
  IniWrite(kIniSection, "Key", "own");
  EXPECT_EQ(IniRead(kIniSection, "Key"), "own");

  officesIn(laptop.Path("writable"));
  EXPECT_EQ(IniRead(kIniSection, "Key"), "own");
  EXPECT_EQ(IniRead(kIniSection, "Other"), "office");
  IniWrite(kIniSection, "Other", "own, too");
  EXPECT_EQ(IniRead(kIniSection, "Other"), "own, too");
  EXPECT_EQ(laptop.Read("writable/Halvane.ini"), "[Ostrel Remote]\nKey=changed\nOther=office\n");
  SetOwnSettingsFolder({});
}

TEST(CommandLine, MakesTheFolderAmongTheDocumentsForItsUserAlone) {
  const TempFolder home;
  setenv("HOME", home.Path().c_str(), 1);
  setenv("XDG_CONFIG_HOME", home.Path().c_str(), 1);
  CommandLine command;
  command.Documents = true;
  const std::pair<std::string, std::string> cases[] = {
      {"", "Documents"},
      {"XDG_DESKTOP_DIR=\"$HOME/Desk\"\nXDG_DOCUMENTS_DIR=\"$HOME/Mes \\\"papiers\\\"/a\"\n",
       "Mes \"papiers\"/a"},
      {"XDG_DOCUMENTS_DIR=\"" + home.Path("elsewhere") + "\"\n", "elsewhere"},
      {"XDG_DOCUMENTS_DIR=\"relative\"\n", "Documents"},
      {"XDG_DOCUMENTS_DIR=", "Documents"},
  };
  for (const auto& [userDirs, documents] : cases) {
    home.Write("user-dirs.dirs", userDirs);
    const std::string folder = home.Path(documents + "/Ostrel Payroll");
    fs::remove_all(home.Path(documents));
    for (int time = 1; time <= 2; ++time) EXPECT_EQ(UseFolder(command), "");
    EXPECT_EQ(ApplicationFolder(), folder);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder;
  }
  fs::remove_all(home.Path("Documents"));
  home.Write("Documents", "a file in the way");
  home.Write("user-dirs.dirs", "");
  EXPECT_THAT(UseFolder(command), testing::EndsWith(home.Path("Documents/Ostrel Payroll")));
  SetApplicationFolder({});
}
#endif

}  // namespace

}  // namespace ostrel
