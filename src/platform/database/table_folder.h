#pragma once

// The folder of the office's dBase tables as a database: what Database calls once OpenTableFolder
// (database.h) has made one. A table's name is the base name of its file, in any case. Every call
// reads the table's file as it is then and closes it.

#include <string>

#include "platform/database/database_body.h"

namespace ostrel {

class TableFolder : public DatabaseBody {
 public:
  /// throws  Failure 76 when the folder does not exist
  TableFolder(std::string folder, bool readOnly);

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
  bool readOnly_;
};

}  // namespace ostrel
