#pragma once

// What the rows of the battery share. A row drives the whole program through one kind of harm many
// times, prints what it saw as one line, and has a control: the same harm without the protection,
// which must do damage, or the row proves nothing.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/files/text_encoding.h"

namespace ostrel {

/// All that a row can do is done where the environment variable OSTREL_BATTERY is "full"; else so
/// much that the rows together take less than a minute.
inline int Runs(int full, int brief) {
  const char* asked = std::getenv("OSTREL_BATTERY");
  return asked != nullptr && std::string_view(asked) == "full" ? full : brief;
}

/// Where every row's random numbers begin, so that a failure comes again.
inline constexpr unsigned kSeed = 20041118;

/// What a row counts, printed at its end: "Killed: 2000 runs, 1990 killed before the day's end;
/// control: 200 lost lines that were held back; seed 20041118".
class Row {
 public:
  ///   control  what the same harm does without the protection; it must have done so
  Row(const char* name, const char* control) : name_(name), control_(control) {}
  ~Row() {
    EXPECT_GT(Control, 0) << name_ << " proves nothing";
    std::cout << name_ << ": ";
    for (const auto& [what, count] : counts_) std::cout << count << " " << what << ", ";
    std::cout << (testing::Test::HasFailure() ? "FAILED" : "nothing lost")
              << "; control: " << Control << " " << control_ << "; seed " << kSeed << std::endl;
  }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;

  std::int64_t& operator[](std::string_view what) {
    for (auto& [known, count] : counts_) {
      if (known == what) return count;
    }
    return counts_.emplace_back(what, 0).second;
  }
  std::int64_t Control = 0;

 private:
  const char *name_, *control_;
  std::vector<std::pair<std::string, std::int64_t>> counts_;
};

/// Harm that bytes come to.
class Harm {
 public:
  explicit Harm(unsigned seed = kSeed) : random_(seed) {}

  std::size_t Below(std::size_t bound) { return random_() % bound; }
  bool Coin() { return Below(2) == 0; }

  void FlipBit(std::string& bytes) {
    char& byte = bytes[Below(bytes.size())];
    byte = static_cast<char>(byte ^ 1 << Below(8));
  }
  std::string Bytes(std::size_t count) {
    std::string bytes(count, '\0');
    for (char& byte : bytes) byte = static_cast<char>(Below(256));
    return bytes;
  }
  /// A text of any letters, half of them ASCII.
  std::string Letters(std::size_t count) {
    std::string text;
    for (; count > 0; --count) {
      text += Coin() ? std::string(1, static_cast<char>(Below(128)))
                     : FromUtf16(Bytes(2), ByteOrder::LittleEnd);
    }
    return text;
  }
  /// As a bad disk, a broken copy or a wrong hand leaves a file.
  std::string Spoil(std::string bytes) {
    for (std::size_t harm = 1 + Below(3); harm > 0 && !bytes.empty(); --harm) {
      const std::size_t at = Below(bytes.size()), count = 1 + Below(64), kind = Below(6);
      const std::string copied = bytes.substr(Below(bytes.size()), count);
      if (kind == 0) bytes.resize(at);
      if (kind == 1) bytes.erase(at, count);
      if (kind == 2) bytes.insert(at, copied);
      if (kind == 3) bytes.replace(at, count, Bytes(count));
      if (kind > 3) FlipBit(bytes);
    }
    return bytes;
  }

 private:
  std::mt19937 random_;
};

/// The parts of "a|b|c".
inline std::vector<std::string> Split(const std::string& text) {
  std::istringstream all(text);
  std::vector<std::string> parts;
  for (std::string part; std::getline(all, part, '|');) parts.push_back(part);
  return parts;
}

}  // namespace ostrel
