#pragma once

// The folder of the office's dBase tables as a database. A table's name is the base name of its file,
// in any case. Every call reads the table's file as it is then and closes it.

#include <memory>
#include <string>
#include <string_view>

#include "platform/database/database.h"
#include "platform/database/database_body.h"

namespace ostrel {

/// Whether the update statement is let through; rows are read-only either way.
enum class TableUpdates { Refused, Allowed };

/// How a folder of tables is opened.
struct TableFolderUse {
  TableUpdates Updates = TableUpdates::Refused;
  std::string Connect = {};   ///< the kind of tables as the system names it: "FoxPro 2.5;"
  std::string KeyField = {};  ///< of the tables that have it; else the first numeric field
};

class TableFolder : public DatabaseBody {
 public:
  /// throws  Failure 76 when the folder does not exist
  TableFolder(std::string folder, TableFolderUse use);

  /// A table's name, or one of the queries of sql_dialect.h.
  ///   throws  Failure 3078, 3274 or 3275 by the table's file, 3061 for an unknown field, 3075 for
  ///           bad SQL
  std::shared_ptr<RecordsetBody> OpenRecordset(std::string_view text, RecordsetType type) override;

  /// The update statement, which puts numbers into fields of every record (dbf_write.h).
  ///   throws  as OpenRecordset; Failure 3027 when the folder was opened read-only
  void Execute(std::string_view sql) override;

 private:
  std::string PathOf(const std::string& table) const;

  std::string folder_;
  TableFolderUse use_;
};

/// Opens the folder whose .dbf files are the tables. No file is kept open; each query and each
/// OpenRecordset reads the file as it is then.
///   folder   path without a separator behind
///   throws   Failure 76 when the folder does not exist, 3275 for tables that are neither FoxPro's nor
///            dBase's
Database OpenTableFolder(const std::string& folder, const TableFolderUse& use);

}  // namespace ostrel
