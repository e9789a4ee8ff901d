#pragma once

// Writes one row of the store at a time. Whether a write is a commit of its own is decided by
// whoever calls (transactions.h).

#include <cstdint>
#include <map>

#include "platform/database/row_change.h"
#include "platform/database/sqlite_connection.h"
#include "platform/database/table_definition.h"

namespace ostrel {

class RowWriter {
 public:
  RowWriter(SqliteConnection& connection, const TableDefinition& table)
      : connection_(connection), table_(table) {}

  /// Carries the change out. A new row gets its id, which no row of this run had before, so that a
  /// bookmark never comes to mean another line. When that fails, the id is kept in `change`, because
  /// a commit may fail with the row on the disk already: an insert that is made again does nothing
  /// where its row stands, and takes another id where another program has taken this one.
  /// To update or delete a row that is not there changes nothing.
  void Write(RowChange& change);

 private:
  void Insert(RowChange& change);
  Bookmark NewRow();
  bool RowExists(Bookmark row);
  bool RowStands(const RowChange& change);
  SqliteStatement& StatementFor(const RowChange& change);

  SqliteConnection& connection_;
  const TableDefinition& table_;
  std::map<std::uint64_t, SqliteStatement> statements_;  // by kind and set of fields
  Bookmark highest_deleted_ = 0;
};

}  // namespace ostrel
