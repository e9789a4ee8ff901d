#pragma once

// Harm that bytes come to, and a look at the store past the program.

#include <sqlite3.h>

#include <random>
#include <string>

namespace ostrel {

class Harm {
 public:
  explicit Harm(unsigned seed) : random_(seed) {}

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
  /// A text of any characters of up to three bytes each in UTF-8, half of them ASCII.
  std::string Letters(std::size_t count) {
    std::string text;
    for (; count > 0; --count) {
      const std::size_t letter = Coin() ? Below(128) : 0x80 + Below(0xD800 - 0x80);
      if (letter < 0x80) {
        text += static_cast<char>(letter);
      } else if (letter < 0x800) {
        text += {static_cast<char>(0xC0 | letter >> 6), static_cast<char>(0x80 | (letter & 63))};
      } else {
        text +=
            {static_cast<char>(0xE0 | letter >> 12), static_cast<char>(0x80 | (letter >> 6 & 63)),
             static_cast<char>(0x80 | (letter & 63))};
      }
    }
    return text;
  }
  /// As a bad disk, a broken copy or a wrong hand leaves a file.
  std::string Spoil(std::string bytes) {
    for (std::size_t harm = 1 + Below(3); harm > 0 && !bytes.empty(); --harm) {
      const std::size_t at = Below(bytes.size()), count = 1 + Below(64);
      switch (Below(6)) {
        case 0:
          bytes.resize(at);
          break;
        case 1:
          bytes.erase(at, count);
          break;
        case 2:
          bytes.insert(at, bytes.substr(Below(bytes.size()), count));
          break;
        case 3:
          bytes.replace(at, std::min(count, bytes.size() - at), Bytes(count));
          break;
        default:
          FlipBit(bytes);
      }
    }
    return bytes;
  }

 private:
  std::mt19937 random_;
};

/// SQLite's own answer, as any program at the file would get it: "a,b|c,d" of two rows, "error" where
/// it has none. Statements that answer nothing are carried out.
inline std::string AskSqlite(const std::string& path, const std::string& sql) {
  std::string answer;
  sqlite3* handle = nullptr;
  const auto row = [](void* text, int count, char** cells, char**) {
    auto& all = *static_cast<std::string*>(text);
    if (!all.empty()) all += '|';
    for (int cell = 0; cell < count; ++cell) {
      (all += cell > 0 ? "," : "") += cells[cell] == nullptr ? "~" : cells[cell];
    }
    return 0;
  };
  const int opened = sqlite3_open(path.c_str(), &handle);
  const int asked = sqlite3_exec(handle, sql.c_str(), row, &answer, nullptr);
  sqlite3_close(handle);
  return opened == SQLITE_OK && asked == SQLITE_OK ? answer : "error";
}

}  // namespace ostrel
