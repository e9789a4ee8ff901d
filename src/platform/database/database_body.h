#pragma once

// What stands behind a Database: the timecard store (store.h) or the folder of dBase tables
// (table_folder.h). Only the database room derives from it; see database.h for each call's meaning.

#include <memory>
#include <string>
#include <string_view>

#include "platform/database/database.h"
#include "platform/database/recordset_body.h"

namespace ostrel {

class DatabaseBody {
 public:
  virtual ~DatabaseBody() = default;

  virtual std::shared_ptr<RecordsetBody> OpenRecordset(std::string_view text,
                                                       RecordsetType type) = 0;
  virtual void Execute(std::string_view sql) = 0;

  // What only a store does; the folder of tables answers with Failure 3251.
  virtual void AppendTable(const TableDefinition& table);
  virtual void DeleteIndex(std::string_view table, std::string_view index);

  virtual void ShowDerivedLines(const std::vector<DerivedLine>& lines);
  virtual void HideDerivedLines() {}

  // Nothing to gather, except in a store.
  virtual void ShareCommits() {}
  virtual void SettleShared() {}
  virtual void CommitShared() {}
};

/// For calls that a kind of database or recordset has no use for.
///   throws  Failure 3251, always, naming the call
[[noreturn]] void RefuseOperation(std::string_view call);

/// throws  Failure 3265, always, naming the field
[[noreturn]] void RefuseUnknownField(std::string_view name);

}  // namespace ostrel
