#pragma once

// The rows of a store's table, as its recordsets reach them. Whoever has this keeps the store alive.

#include <memory>
#include <utility>
#include <vector>

#include "platform/database/sqlite_connection.h"
#include "platform/database/table_definition.h"
#include "platform/database/transactions.h"

namespace ostrel {

class StoreRows {
 public:
  /// `store` owns the other three.
  StoreRows(std::shared_ptr<const void> store, SqliteConnection& connection,
            Transactions& transactions, const TableDefinition& table)
      : store_(std::move(store)),
        connection_(connection),
        transactions_(transactions),
        table_(table) {}

  const TableDefinition& Table() const { return table_; }
  bool ReadOnly() const { return connection_.ReadOnly(); }
  Transactions& InStore() const { return transactions_; }
  /// Ids of all rows up to one, in the order of entry.
  std::vector<Bookmark> UpTo(Bookmark highest) const;

 private:
  std::shared_ptr<const void> store_;
  SqliteConnection& connection_;
  Transactions& transactions_;
  const TableDefinition& table_;
};

}  // namespace ostrel
