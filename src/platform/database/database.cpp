#include "platform/database/database.h"

#include "platform/database/database_body.h"
#include "platform/values/failure.h"

namespace ostrel {

DatabaseBody& Database::Body() const {
  if (!body_) throw Failure(failure_number::kObjectNotSet, "The database has not been opened.");
  return *body_;
}

Recordset Database::OpenRecordset(std::string_view text, RecordsetType type) const {
  return Recordset(Body().OpenRecordset(text, type));
}

void Database::Execute(std::string_view sql) const { Body().Execute(sql); }

void Database::AppendTable(const TableDefinition& table) const { Body().AppendTable(table); }

void Database::ShowDerivedLines(const std::vector<DerivedLine>& lines) const {
  Body().ShowDerivedLines(lines);
}

void Database::HideDerivedLines() const { Body().HideDerivedLines(); }

void Database::DeleteIndex(std::string_view table, std::string_view index) const {
  Body().DeleteIndex(table, index);
}

void Database::Close() { body_.reset(); }

void Database::ShareCommits() const { Body().ShareCommits(); }
void Database::SettleShared() const { Body().SettleShared(); }
void Database::CommitShared() const { Body().CommitShared(); }

void DatabaseBody::AppendTable(const TableDefinition&) { RefuseOperation("appending a table"); }

void DatabaseBody::ShowDerivedLines(const std::vector<DerivedLine>&) {
  RefuseOperation("derived lines");
}

void DatabaseBody::DeleteIndex(std::string_view, std::string_view) {
  RefuseOperation("deleting an index");
}

void RefuseOperation(std::string_view call) {
  throw Failure(failure_number::kNotOffered,
                "This kind of table or answer does not offer " + std::string(call) + ".");
}

void RefuseUnknownField(std::string_view name) {
  throw Failure(failure_number::kItemNotFound, "There is no field \"" + std::string(name) + "\".");
}

}  // namespace ostrel
