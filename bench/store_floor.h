#pragma once

// A large store for benchmarks, and what SQLite alone needs for the work they measure.

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "store/line_table.h"

namespace ostrel {

inline constexpr double kLastDay = 38152;  // 06/14/04
inline constexpr const char* kLastDayText = "06/14/04";
inline constexpr int kLinesADay = 700;
inline constexpr int kEmployees = 200;

/// The store's file without anything of ours in between.
class RawStore {
 public:
  explicit RawStore(const std::string& path) {
    Check(sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                          nullptr));
    Run("PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = FULL; PRAGMA cache_size = -32768");
  }
  ~RawStore() { sqlite3_close_v2(handle_); }
  RawStore(const RawStore&) = delete;
  RawStore& operator=(const RawStore&) = delete;

  void Run(const std::string& sql) const {
    Check(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr));
  }
  sqlite3_stmt* Prepare(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr));
    return statement;
  }
  static void Check(int code) {
    if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(code));
  }

 private:
  sqlite3* handle_ = nullptr;
};

/// Makes a store of `lines` lines, kLinesADay of them on kLastDay and on each day before it, in the
/// order in which they would have been entered: each employee in turn clocks in, does piecework and
/// clocks out.
inline void FillStore(const std::string& path, int lines) {
  std::filesystem::remove(path);
  {
    const Database db = CreateDatabase(path, TimecardFormat());
    db.Execute("Create Index dTime on [OstrelPr] (ETIME DESC)");
  }
  const std::string count = std::to_string(lines);
  const std::string aDay = std::to_string(kLinesADay);
  const std::string employees = std::to_string(kEmployees);
  RawStore(path).Run(
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " + count +
      ") INSERT INTO OstrelPr SELECT 101 + i % " + employees + ", 'EMPLOYEE ' || (101 + i % " +
      employees + "), " + std::to_string(kLastDay) + " - (" + count + " - 1 - i) / " + aDay +
      " + (420 + (" + aDay + " - 1 - (" + count + " - 1 - i) % " + aDay +
      ") / 60 * 50) / 1440.0, NULL, CASE i / " + employees +
      " % 4 WHEN 0 THEN 'I' WHEN 3 THEN 'O' ELSE 'P' END, i % 7 * 12.5, 'BOX', 1, i % 5, 3, "
      "'block ' || i % 40, 0.27, i % 7 * 3.38, NULL, NULL FROM n");
}

/// Row ids of all lines, newest first.
inline std::vector<std::int64_t> ListRowsByTime(const RawStore& store) {
  sqlite3_stmt* rows = store.Prepare("SELECT rowid FROM OstrelPr ORDER BY ETIME DESC, rowid DESC");
  std::vector<std::int64_t> ids;
  while (sqlite3_step(rows) == SQLITE_ROW) ids.push_back(sqlite3_column_int64(rows, 0));
  sqlite3_finalize(rows);
  return ids;
}

/// Reads all fields of each row and rewrites three of them, in one commit.
inline void RewriteRows(const RawStore& store, const std::vector<std::int64_t>& ids) {
  sqlite3_stmt* read = store.Prepare("SELECT * FROM OstrelPr WHERE rowid = ?1");
  sqlite3_stmt* write =
      store.Prepare("UPDATE OstrelPr SET GROSS = ?2, HOUR_GROSS = ?3, HOURS = ?4 WHERE rowid = ?1");
  store.Run("BEGIN IMMEDIATE");
  for (const std::int64_t id : ids) {
    sqlite3_bind_int64(read, 1, id);
    sqlite3_step(read);
    const double quantity = sqlite3_column_double(read, 5);
    for (const int text : {1, 4, 6, 10}) sqlite3_column_text(read, text);
    sqlite3_reset(read);
    sqlite3_bind_int64(write, 1, id);
    sqlite3_bind_double(write, 2, quantity);
    sqlite3_bind_double(write, 3, quantity);
    sqlite3_bind_double(write, 4, quantity);
    sqlite3_step(write);
    sqlite3_reset(write);
  }
  store.Run("COMMIT");
  sqlite3_finalize(read);
  sqlite3_finalize(write);
}

/// One new line in a commit of its own.
inline void AddOneLine(const RawStore& store) {
  store.Run(
      "INSERT INTO OstrelPr(EMPL_NUMB, ETIME, EVENT_TYPE, QUANTITY, QUAN_DESC, RATE) "
      "VALUES(130, 38152.5, 'P', 100, 'BOX', 0.27)");
}

}  // namespace ostrel
