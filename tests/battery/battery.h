#pragma once

// What the rows of the battery share. A row drives the whole program through one kind of harm many
// times, prints what it saw as one line, and has a control: the same harm without the protection,
// which must do damage, or the row proves nothing.

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace ostrel {

/// All that a row can do is done where the environment variable OSTREL_BATTERY is "full"; else so
/// much that the rows together take less than a minute.
inline bool FullBattery() {
  const char* asked = std::getenv("OSTREL_BATTERY");
  return asked != nullptr && std::string_view(asked) == "full";
}

inline int Runs(int full, int brief) { return FullBattery() ? full : brief; }

/// Where every row's random numbers begin, so that a failure comes again.
inline constexpr unsigned kSeed = 20041118;

/// "Killed: 2000 runs, ..." on a line of standard output.
inline void Figure(const char* row, const std::string& text) {
  std::cout << row << ": " << text << std::endl;
}

}  // namespace ostrel
