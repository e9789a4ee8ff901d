#include "platform/database/database_body.h"

#include "platform/database/refusals.h"

namespace ostrel {

std::shared_ptr<RecordsetBody> DatabaseBody::OpenRows(const std::vector<Bookmark>&) {
  RefuseOperation("opening rows by bookmark");
}

void DatabaseBody::AppendTable(const TableDefinition&) { RefuseOperation("appending a table"); }

void DatabaseBody::DeleteIndex(std::string_view, std::string_view) {
  RefuseOperation("deleting an index");
}

}  // namespace ostrel
