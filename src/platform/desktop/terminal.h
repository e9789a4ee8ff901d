#pragma once

// The terminal that the program was started from, if there is one: the words that were typed behind
// its name, and a place to say something before there is a window.

#include <string>
#include <vector>

namespace ostrel {

/// The words behind the program's name, UTF-8.
std::vector<std::string> StartWords(int argc, const char* const* argv);

enum class Stream { Output, Error };

/// Lines parted by "\n". On Windows, where a program with a window has no streams of its own, they
/// go to the console that it was started from, or are lost where it was started from none.
void SayOnTerminal(Stream stream, const std::string& text);

}  // namespace ostrel
