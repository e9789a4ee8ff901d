#pragma once

#include <sqlite3.h>

#include <string>

namespace ostrel {

/// SQLite's own answer about a store, as any program at the file would get it: "a,b|c,d" of two rows,
/// "error" where it has none. Statements that answer nothing are carried out.
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
  const int opened = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  const int asked = sqlite3_exec(handle, sql.c_str(), row, &answer, nullptr);
  sqlite3_close(handle);
  return opened == SQLITE_OK && asked == SQLITE_OK ? answer : "error";
}

}  // namespace ostrel
