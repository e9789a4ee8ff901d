#include "program/command_line.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/files/user_folders.h"
#include "platform/values/failure.h"

namespace ostrel {

namespace {

constexpr std::string_view kFolderOption = "--folder";

constexpr const char* kVersion = "Ostrel Payroll " OSTREL_VERSION "\n";

constexpr const char* kHelp =
    "usage: OstrelPayroll [--folder <path> | --documents]\n"
    "       OstrelPayroll --version | --help\n"
    "\n"
    "A timecard program for the field.\n"
    "\n"
    "  --folder <path>  the client's tables, the lines and the log lie in this folder;\n"
    "                   without it, in the folder of the program\n"
    "  --documents      the same in \"Ostrel Payroll\" among your documents, which is made\n"
    "                   for you alone when it is not there\n"
    "  --version        says which version this is\n"
    "  --help           says this\n";

CommandLine Refused(const std::string& reason) {
  return {CommandLine::Kind::Refuse,
          "OstrelPayroll: " + reason + "\nOstrelPayroll --help says what there is.\n",
          {},
          false};
}

CommandLine Said(const char* text) { return {CommandLine::Kind::Say, text, {}, false}; }

// Where a folder lies whatever the folder is that the program was started in, without separators
// behind it.
std::string Settled(const std::string& folder) {
  std::error_code unknown;
  const std::filesystem::path absolute = std::filesystem::absolute(PathFromUtf8(folder), unknown);
  const std::filesystem::path plain =
      (unknown ? PathFromUtf8(folder) : absolute).lexically_normal();
  return Utf8FromPath(plain.has_filename() ? plain : plain.parent_path());
}

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& words) {
  CommandLine command;
  for (std::size_t at = 0; at < words.size(); ++at) {
    const std::string& word = words[at];
    if (word == "--version") return Said(kVersion);
    if (word == "--help") return Said(kHelp);
    if (word == "--documents") {
      command.Documents = true;
    } else if (word == kFolderOption && at + 1 < words.size()) {
      command.Folder = words[++at];
    } else if (word.starts_with(kFolderOption) &&
               word.substr(kFolderOption.size()).starts_with('=')) {
      command.Folder = word.substr(kFolderOption.size() + 1);
    } else if (word != kFolderOption) {
      return Refused("unknown option " + word);
    }
    if (word.starts_with(kFolderOption) && command.Folder.empty()) {
      return Refused("no folder behind --folder");
    }
  }
  if (command.Documents && !command.Folder.empty()) {
    return Refused("--folder and --documents name two folders");
  }
  return command;
}

std::string UseFolder(const CommandLine& command) {
  if (command.Documents) {
    const std::string folder = DocumentsFolder() + kPathSeparator + "Ostrel Payroll";
    try {
      MakeHiddenFolder(folder);
    } catch (const Failure& refused) {
      return refused.Text;
    }
    SetApplicationFolder(folder);
  } else if (!command.Folder.empty()) {
    const std::string folder = Settled(command.Folder);
    std::error_code unreachable;
    if (!std::filesystem::is_directory(PathFromUtf8(folder), unreachable)) {
      return folder + " is not there, or is no folder.";
    }
    SetApplicationFolder(folder);
  }
  return {};
}

}  // namespace ostrel
