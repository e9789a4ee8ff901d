#pragma once

// What the program was told when it was started: which folder to work in, or to say something about
// itself and end. main asks before there is a window; nothing of it needs one.

#include <string>
#include <vector>

namespace ostrel {

struct CommandLine {
  enum class Kind { Work, Say, Refuse };
  Kind What = Kind::Work;
  std::string Text;        ///< to say or to refuse with, several lines, with a line end
  std::string Folder;      ///< to work in; "" for the executable's
  bool Documents = false;  ///< work in the folder among the user's documents
};

/// The words behind the program's name: --folder <path> or --folder=<path>, --documents, --version,
/// --help. The first word that is none of these, or a folder missing behind --folder, refuses the
/// rest.
CommandLine ReadCommandLine(const std::vector<std::string>& words);

/// Makes the folder of the command line the application folder. The one among the documents is made
/// for its user alone when it is missing; one that was named must be there, since a slip of the pen
/// would otherwise begin a second store.
///   returns  what keeps it from being used, or the empty text
std::string UseFolder(const CommandLine& command);

}  // namespace ostrel
