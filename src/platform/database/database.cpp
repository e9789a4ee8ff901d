#include "platform/database/database.h"

#include "platform/database/database_body.h"
#include "platform/values/failure.h"

namespace ostrel {

DatabaseBody& Database::Body() const {
  if (!body_ && open_) body_ = open_().body_;
  if (!body_) throw Failure(failure_number::kObjectNotSet, "The database has not been opened.");
  return *body_;
}

Recordset Database::OpenRecordset(std::string_view text, RecordsetType type) const {
  return Recordset(Body().OpenRecordset(text, type));
}

Recordset Database::OpenRows(const std::vector<Bookmark>& rows) const {
  return Recordset(Body().OpenRows(rows));
}

void Database::Execute(std::string_view sql) const { Body().Execute(sql); }

void Database::AppendTable(const TableDefinition& table) const { Body().AppendTable(table); }

void Database::DeleteIndex(std::string_view table, std::string_view index) const {
  Body().DeleteIndex(table, index);
}

void Database::Close() {
  body_.reset();
  open_ = {};
}

void Database::Settle() const { Body().Settle(); }

std::weak_ptr<const void> Database::Hold() const {
  return body_ ? body_->Hold() : std::weak_ptr<const void>();
}

Gathering::Gathering(const Database& database) {
  database.Open();
  body_ = database.body_;
  body_->BeginGathering();
}

Gathering::~Gathering() { body_->EndGathering(); }

void Gathering::Settle() const { body_->Settle(); }

Look::Look(const Database& database) : body_(database.body_) {
  if (body_) body_->BeginLook();
}

Look::~Look() {
  if (body_) body_->EndLook();
}

}  // namespace ostrel
