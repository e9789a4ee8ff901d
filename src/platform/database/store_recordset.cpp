#include "platform/database/store_recordset.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/database/field_values.h"
#include "platform/database/refusals.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

[[noreturn]] void RefuseWithoutEdit() {
  throw Failure(failure_number::kNoEditUnderWay, "Update or assignment without AddNew or Edit.");
}

}  // namespace

StoreRecordset::StoreRecordset(StoreRows store, std::vector<Bookmark> rows)
    : store_(std::move(store)), rows_(std::move(rows)) {
  WalkedRecordset::MoveTo(0);
}

StoreRecordset::StoreRecordset(StoreRows store, WholeTable table)
    : store_(std::move(store)), unlisted_(table.Highest) {
  if (unlisted_ == 0) WalkedRecordset::MoveTo(0);
}

const std::vector<Bookmark>& StoreRecordset::Rows() const {
  if (unlisted_ != 0) {
    std::vector<Bookmark> listed = store_.UpTo(unlisted_);
    listed.insert(listed.end(), rows_.begin(), rows_.end());
    rows_ = std::move(listed);
    unlisted_ = 0;
  }
  return rows_;
}

const FieldDefinition& StoreRecordset::Definition(int ordinal) const {
  return store_.Table().Fields[static_cast<std::size_t>(ordinal)];
}

void StoreRecordset::MoveTo(std::size_t row) {
  mode_ = EditMode::None;
  WalkedRecordset::MoveTo(row);
}

void StoreRecordset::SetBookmark(Bookmark bookmark) {
  const auto& rows = Rows();
  const auto found = std::find(rows.begin(), rows.end(), bookmark);
  if (found == rows.end() || !store_.InStore().Read(bookmark)) RefuseDeletedRow();
  MoveTo(static_cast<std::size_t>(found - rows.begin()));
}

RowFields StoreRecordset::CurrentFields() const {
  RowFields fields = store_.InStore().Read(Rows()[CurrentRow()]);
  if (!fields) RefuseDeletedRow();
  return fields;
}

// The operator means the line on the screen. Its id alone does not tell: another program may have
// deleted it and given the id to the next line that it saved.
void StoreRecordset::RefuseIfNotAsShown(Bookmark row, const RowFields& now) const {
  const RowFields shown = is_on_show_ ? store_.InStore().Shown(row) : nullptr;
  if (shown && now && *shown != *now) RefuseChangedRow();
}

void StoreRecordset::BeginEdit(RowChange change, std::vector<Value> fields) {
  mode_ = change.What == RowChange::Kind::Insert ? EditMode::Add : EditMode::InProgress;
  edit_ = std::move(change);
  buffer_ = std::move(fields);
}

void StoreRecordset::AddNew() { BeginEdit({}, std::vector<Value>(store_.Table().Fields.size())); }

void StoreRecordset::Edit() {
  const Bookmark row = Rows()[CurrentRow()];
  const RowFields now = CurrentFields();
  RefuseIfNotAsShown(row, now);
  BeginEdit({RowChange::Kind::Update, row, 0, {}, now}, *now);
}

// A store that cannot be written is found out here and not at AddNew, so that a line that cannot be
// saved is one report, and not one for each field.
void StoreRecordset::Update() {
  if (mode_ == EditMode::None) RefuseWithoutEdit();
  if (store_.ReadOnly()) {
    throw Failure(failure_number::kNotUpdatable, "Cannot update: the store is read-only.");
  }
  if (mode_ == EditMode::InProgress && edit_.Fields == 0) {
    mode_ = EditMode::None;
    return;
  }
  edit_.Values.clear();
  for (std::size_t i = 0; i < buffer_.size(); ++i) {
    if ((edit_.Fields >> i & 1U) != 0) edit_.Values.push_back(buffer_[i]);
  }
  store_.InStore().Write(edit_, std::make_shared<const std::vector<Value>>(buffer_));
  if (mode_ == EditMode::Add) rows_.push_back(edit_.Row);
  mode_ = EditMode::None;
}

void StoreRecordset::Delete() {
  const std::size_t place = CurrentRow();
  const Bookmark row = Rows()[place];
  mode_ = EditMode::None;
  const RowFields now = store_.InStore().Read(row);
  RefuseIfNotAsShown(row, now);
  RowChange change{RowChange::Kind::Delete, row, 0, {}, now};
  store_.InStore().Write(change, nullptr);
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place));
  RowRemoved();
}

int StoreRecordset::FieldCount() const { return static_cast<int>(store_.Table().Fields.size()); }

int StoreRecordset::OrdinalOf(std::string_view name) const {
  const int ordinal = FieldOrdinal(store_.Table(), name);
  if (ordinal < 0) RefuseUnknownField(name);
  return ordinal;
}

Value StoreRecordset::GetField(int ordinal) const {
  const auto at = static_cast<std::size_t>(ordinal);
  return mode_ == EditMode::None ? (*CurrentFields())[at] : buffer_[at];
}

void StoreRecordset::SetField(int ordinal, const Value& value) {
  if (mode_ == EditMode::None) RefuseWithoutEdit();
  buffer_[static_cast<std::size_t>(ordinal)] = ValueForField(Definition(ordinal), value);
  edit_.Fields |= 1U << static_cast<unsigned>(ordinal);
}

int StoreRecordset::FieldSize(int ordinal) const {
  switch (Definition(ordinal).Type) {
    case FieldType::Single:
      return sizeof(float);
    case FieldType::Double:
    case FieldType::Date:
      return sizeof(double);
    case FieldType::Text:
      return Definition(ordinal).Size;
  }
  return 0;
}

std::string StoreRecordset::FieldName(int ordinal) const { return Definition(ordinal).Name; }

std::vector<Value> StoreRecordset::StoredRowAt(std::size_t position) const {
  const RowFields fields = store_.InStore().Read(BookmarkAt(position));
  return fields ? *fields : std::vector<Value>();
}

std::vector<Value> StoreRecordset::RowToShow(std::size_t position, bool& asStored) const {
  const Bookmark row = BookmarkAt(position);
  is_on_show_ = true;
  asStored = true;
  RowFields fields;
  try {
    fields = store_.InStore().ReadWithoutWaiting(row);
    store_.InStore().Show(row, fields);
  } catch (const Failure&) {
    asStored = false;
    fields = store_.InStore().Shown(row);
  }
  return fields ? *fields : std::vector<Value>();
}

}  // namespace ostrel
