#include "platform/database/recordset.h"

#include "platform/database/recordset_body.h"
#include "platform/database/refusals.h"
#include "platform/values/failure.h"

namespace ostrel {

Value Field::Get() const { return body_.GetField(ordinal_); }

const Field& Field::operator=(const Value& value) const {
  body_.SetField(ordinal_, value);
  return *this;
}

int Field::Size() const { return body_.FieldSize(ordinal_); }
std::string Field::Name() const { return body_.FieldName(ordinal_); }

RecordsetBody& Recordset::Body() const {
  if (!body_ && open_) body_ = open_().body_;
  if (!body_) throw Failure(failure_number::kObjectNotSet, "The recordset has not been opened.");
  return *body_;
}

bool Recordset::Bof() const { return Body().Bof(); }
bool Recordset::Eof() const { return Body().Eof(); }
void Recordset::MoveFirst() { Body().MoveFirst(); }
void Recordset::MoveLast() { Body().MoveLast(); }
void Recordset::MoveNext() { Body().MoveNext(); }
void Recordset::MovePrevious() { Body().MovePrevious(); }

void Recordset::AddNew() { Body().AddNew(); }
void Recordset::Edit() { Body().Edit(); }
void Recordset::Update() { Body().Update(); }
void Recordset::CancelUpdate() { Body().CancelUpdate(); }
void Recordset::Delete() { Body().Delete(); }
EditMode Recordset::Mode() const { return Body().Mode(); }

Bookmark Recordset::GetBookmark() const { return Body().GetBookmark(); }
void Recordset::SetBookmark(Bookmark bookmark) { Body().SetBookmark(bookmark); }

Field Recordset::operator[](std::string_view name) const {
  RecordsetBody& body = Body();
  return Field(body, body.OrdinalOf(name));
}

Field Recordset::operator[](int ordinal) const {
  RecordsetBody& body = Body();
  if (ordinal < 0 || ordinal >= body.FieldCount()) RefuseUnknownField(std::to_string(ordinal));
  return Field(body, ordinal);
}

int Recordset::FieldCount() const { return Body().FieldCount(); }

void Recordset::SetIndex(std::string_view name) { Body().SetIndex(name); }
void Recordset::Seek(std::string_view comparison, const Value& key) {
  Body().Seek(comparison, key);
}
bool Recordset::NoMatch() const { return Body().NoMatch(); }

void Recordset::Close() {
  body_.reset();
  open_ = {};
}

std::size_t Recordset::RowCount() const { return Body().RowCount(); }
Bookmark Recordset::BookmarkAt(std::size_t position) const { return Body().BookmarkAt(position); }
std::vector<Value> Recordset::RowAt(std::size_t position, bool* asStored) const {
  bool isAsStored = false;
  return Body().RowToShow(position, asStored == nullptr ? isAsStored : *asStored);
}
std::vector<Value> Recordset::StoredRowAt(std::size_t position) const {
  return Body().StoredRowAt(position);
}
std::ptrdiff_t Recordset::Position() const { return Body().Position(); }
void Recordset::SetPosition(std::size_t position) { Body().SetPosition(position); }

}  // namespace ostrel
