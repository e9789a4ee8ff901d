#include "support/outside_store.h"

#include <cmath>
#include <cstdio>
#include <filesystem>

#include "support/temp_folder.h"

namespace ostrel {

namespace {

RawCell CellOf(sqlite3_stmt* row, int column) {
  switch (sqlite3_column_type(row, column)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_TEXT:
      return std::string(reinterpret_cast<const char*>(sqlite3_column_text(row, column)));
    default:
      return sqlite3_column_double(row, column);
  }
}

}  // namespace

double RawLine::Number(int field) const {
  const auto* number = std::get_if<double>(&(*this)[field]);
  return number == nullptr ? 0 : *number;
}

std::string RawLine::Text(int field) const {
  const auto* text = std::get_if<std::string>(&(*this)[field]);
  return text == nullptr ? "" : *text;
}

OutsideStore::OutsideStore(const std::string& path) {
  sqlite3* handle = nullptr;
  sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  handle_.reset(handle, sqlite3_close_v2);
}

std::optional<RawLines> OutsideStore::Read() const {
  sqlite3_stmt* rows = nullptr;
  sqlite3_prepare_v2(handle_.get(), "SELECT rowid, * FROM OstrelPr", -1, &rows, nullptr);
  RawLines lines;
  int step = rows == nullptr ? SQLITE_ERROR : sqlite3_step(rows);
  for (; step == SQLITE_ROW; step = sqlite3_step(rows)) {
    RawLine& line = lines[sqlite3_column_int64(rows, 0)];
    for (int field = 1; field <= kLineFieldCount; ++field)
      line.Cells.push_back(CellOf(rows, field));
  }
  sqlite3_finalize(rows);
  if (step != SQLITE_DONE) return {};
  return lines;
}

bool OutsideStore::Do(const std::string& sql) const {
  return sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::optional<RawLines> ReadKilled(const std::string& store, const std::string& copy) {
  for (const char* file : {"", "-journal"}) {
    std::filesystem::remove(copy + file);
    if (!std::filesystem::exists(store + file)) continue;
    WriteWholeFile(copy + file, ReadWholeFile(store + file));
  }
  return OutsideStore(copy).Read();
}

std::string TextOf(const RawLine& line) {
  std::string all;
  for (const RawCell& cell : line.Cells) {
    char number[40] = "~";
    if (const auto* value = std::get_if<double>(&cell)) {
      std::snprintf(number, sizeof number, "%.15g", *value);
    }
    const auto* text = std::get_if<std::string>(&cell);
    all += (all.empty() ? "" : ",") + (text == nullptr ? std::string(number) : *text);
  }
  return all;
}

}  // namespace ostrel
