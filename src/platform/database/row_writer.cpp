#include "platform/database/row_writer.h"

#include <algorithm>
#include <string>

namespace ostrel {
namespace {

// The row id is parameter 1 in every statement, the fields that are set follow.

/// For each field that is set: before, its name, between, its parameter.
std::string FieldList(const TableDefinition& table, const RowChange& change,
                      std::string_view before, std::string_view between) {
  std::string list;
  int parameter = 1;
  const auto& fields = table.Fields;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if ((change.Fields >> i & 1U) == 0) continue;
    list.append(before).append(fields[i].Name).append(between);
    list += std::to_string(++parameter);
  }
  return list;
}

std::string InsertSql(const TableDefinition& table, const RowChange& change) {
  std::string names;
  std::string parameters;
  const auto& fields = table.Fields;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if ((change.Fields >> i & 1U) == 0) continue;
    names += ", " + fields[i].Name;
    parameters += ", ?";
  }
  return "INSERT INTO " + table.Name + "(rowid" + names + ") VALUES(?1" + parameters + ")";
}

std::string SqlFor(const TableDefinition& table, const RowChange& change) {
  switch (change.What) {
    case RowChange::Kind::Insert:
      return InsertSql(table, change);
    case RowChange::Kind::Update:
      return "UPDATE " + table.Name + " SET " + FieldList(table, change, ", ", " = ?").substr(2) +
             " WHERE rowid = ?1";
    case RowChange::Kind::Delete:
      return "DELETE FROM " + table.Name + " WHERE rowid = ?1";
  }
  return {};
}

void BindFields(SqliteStatement& statement, const RowChange& change) {
  int parameter = 2;
  for (const Value& value : change.Values) statement.Bind(parameter++, value);
}

/// Notes the id that an insert has given, whether it then stands or is undone.
class LastInsertedRow {
 public:
  LastInsertedRow(sqlite3* handle, Bookmark& row) : handle_(handle), row_(row) {
    sqlite3_set_last_insert_rowid(handle_, 0);
  }
  ~LastInsertedRow() {
    if (const Bookmark row = sqlite3_last_insert_rowid(handle_); row != 0) row_ = row;
  }
  LastInsertedRow(const LastInsertedRow&) = delete;
  LastInsertedRow& operator=(const LastInsertedRow&) = delete;

 private:
  sqlite3* handle_;
  Bookmark& row_;
};

bool HasRow(SqliteStatement& statement) {
  const bool found = statement.Step();
  statement.Reset();
  return found;
}

}  // namespace

SqliteStatement& RowWriter::StatementFor(const RowChange& change) {
  const auto key = static_cast<std::uint64_t>(change.What) << 32U | change.Fields;
  const auto kept = statements_.find(key);
  if (kept != statements_.end()) return kept->second;
  const StoreStep step =
      change.What == RowChange::Kind::Delete ? StoreStep::Delete : StoreStep::Write;
  return statements_.try_emplace(key, connection_, SqlFor(table_, change), step).first->second;
}

void RowWriter::Write(RowChange& change) {
  if (change.What == RowChange::Kind::Insert) return Insert(change);
  SqliteStatement& statement = StatementFor(change);
  statement.Bind(1, change.Row);
  BindFields(statement, change);
  statement.Run();
  if (change.What == RowChange::Kind::Delete) {
    highest_deleted_ = std::max(highest_deleted_, change.Row);
  }
}

void RowWriter::Insert(RowChange& change) {
  Bookmark row = change.Row;
  if (row != 0 && RowStands(change)) return;
  if (row == 0 || RowExists(row)) row = NewRow();
  SqliteStatement& statement = StatementFor(change);
  if (row == 0) {
    statement.BindNull(1);
  } else {
    statement.Bind(1, row);
  }
  BindFields(statement, change);
  const LastInsertedRow inserted(connection_.Handle(), change.Row);
  statement.Run();
}

// SQLite gives the id of a deleted last row to the next one, so after a delete it is not asked.
Bookmark RowWriter::NewRow() {
  if (highest_deleted_ == 0) return 0;
  SqliteStatement& highest = connection_.ReadStatement("SELECT max(rowid) FROM " + table_.Name);
  Bookmark row = highest_deleted_;
  while (highest.Step()) row = std::max(row, highest.Integer(0));
  return row + 1;
}

bool RowWriter::RowExists(Bookmark row) {
  SqliteStatement& found =
      connection_.ReadStatement("SELECT rowid FROM " + table_.Name + " WHERE rowid = ?1");
  found.Bind(1, row);
  return HasRow(found);
}

bool RowWriter::RowStands(const RowChange& change) {
  SqliteStatement found(connection_,
                        "SELECT rowid FROM " + table_.Name + " WHERE rowid = ?1" +
                            FieldList(table_, change, " AND ", " IS ?"),
                        StoreStep::Read);
  found.Bind(1, change.Row);
  BindFields(found, change);
  return HasRow(found);
}

}  // namespace ostrel
