#pragma once

// What stands behind a Database: a store (store.h) or the folder of dBase tables (table_folder.h).
// Only the database rooms derive from it; see database.h for each call's meaning.

#include <memory>
#include <string_view>
#include <vector>

#include "platform/database/recordset_body.h"
#include "platform/database/table_definition.h"

namespace ostrel {

class DatabaseBody {
 public:
  virtual ~DatabaseBody() = default;

  virtual std::shared_ptr<RecordsetBody> OpenRecordset(std::string_view text,
                                                       RecordsetType type) = 0;
  virtual void Execute(std::string_view sql) = 0;

  // What only a store does; the folder of tables answers with Failure 3251.
  virtual std::shared_ptr<RecordsetBody> OpenRows(const std::vector<Bookmark>& rows);
  virtual void AppendTable(const TableDefinition& table);
  virtual void DeleteIndex(std::string_view table, std::string_view index);

  // Nothing to hold, except in a store.
  virtual void BeginGathering() {}
  virtual void EndGathering() noexcept {}
  virtual void BeginLook() {}
  virtual void EndLook() noexcept {}
  virtual void Settle() {}
  virtual std::weak_ptr<const void> Hold() const { return {}; }
};

}  // namespace ostrel
