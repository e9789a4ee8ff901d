#include "platform/database/store_recordset.h"

#include <algorithm>
#include <utility>

#include "platform/database/store_fields.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

constexpr std::size_t kMostRowsAhead = 64;
constexpr std::size_t kMostRowsKept = 1000;
constexpr std::chrono::milliseconds kRowsAheadStay{20};

[[noreturn]] void RefuseDeletedRow() {
  throw Failure(failure_number::kDeletedRecord, "Record is deleted.");
}

[[noreturn]] void RefuseWithoutEdit() {
  throw Failure(failure_number::kNoEditUnderWay, "Update or assignment without AddNew or Edit.");
}

void RefuseReadOnly(const Store& store) {
  if (!store.ReadOnly()) return;
  throw Failure(failure_number::kNotUpdatable, "Cannot update: the store is read-only.");
}

const FieldDefinition& Definition(int ordinal) {
  return LineTable().Fields[static_cast<std::size_t>(ordinal)];
}

}  // namespace

StoreRecordset::StoreRecordset(std::shared_ptr<Store> store, std::vector<Bookmark> rows)
    : store_(std::move(store)), rows_(std::move(rows)) {
  WalkedRecordset::MoveTo(0);
}

StoreRecordset::StoreRecordset(std::shared_ptr<Store> store, WholeTable table)
    : store_(std::move(store)), unlisted_(table.Highest) {
  if (unlisted_ == 0) WalkedRecordset::MoveTo(0);
}

const std::vector<Bookmark>& StoreRecordset::Rows() const {
  if (unlisted_ != 0) {
    std::vector<Bookmark> listed = store_->RowsUpTo(unlisted_);
    listed.insert(listed.end(), rows_.begin(), rows_.end());
    rows_ = std::move(listed);
    unlisted_ = 0;
  }
  return rows_;
}

void StoreRecordset::MoveTo(std::size_t row) {
  mode_ = EditMode::None;
  const auto step = static_cast<std::ptrdiff_t>(row) - static_cast<std::ptrdiff_t>(moved_to_);
  const bool walks = step == step_ && (step == 1 || step == -1);
  step_ = step;
  moved_to_ = row;
  if (!walks) ahead_ = 1;
  const bool ahead =
      walks && ahead_ > 1 && std::chrono::steady_clock::now() - read_at_ < kRowsAheadStay;
  if (!ahead && !store_->Connection().InTransaction()) read_.clear();
  WalkedRecordset::MoveTo(row);
}

void StoreRecordset::SetBookmark(Bookmark bookmark) {
  const auto& rows = Rows();
  const auto found = std::find(rows.begin(), rows.end(), bookmark);
  if (found == rows.end()) RefuseDeletedRow();
  const bool known = IsRead(bookmark) && store_->Connection().InTransaction();
  std::vector<Value> fields;
  if (!known && !store_->ReadRow(bookmark, fields)) RefuseDeletedRow();
  MoveTo(static_cast<std::size_t>(found - rows.begin()));
  if (!known) Room(bookmark) = std::move(fields);
}

/// A place for a row that has just been read.
std::vector<Value>& StoreRecordset::Room(Bookmark row) const {
  const std::uint64_t change = store_->Writes().Changes();
  if (read_change_ != change) read_.clear();
  read_change_ = change;
  return read_[row];
}

bool StoreRecordset::IsRead(Bookmark row) const {
  return read_change_ == store_->Writes().Changes() && read_.contains(row);
}

/// Twice as many rows each time, as long as the walk goes on and nothing is written on the way.
const std::vector<Value>& StoreRecordset::CurrentFields() const {
  const std::size_t position = CurrentRow();
  const Bookmark row = Rows()[position];
  if (!IsRead(row)) {
    const bool walks = step_ == 1 || step_ == -1;
    const bool undisturbed = read_change_ == store_->Writes().Changes();
    ahead_ = walks && undisturbed ? std::min(2 * ahead_, kMostRowsAhead) : 1;
    ReadFrom(position, ahead_);
  }
  if (!IsRead(row)) RefuseDeletedRow();
  return read_[row];
}

/// One look at the file for that many rows in the walk's direction, or as many as there are.
void StoreRecordset::ReadFrom(std::size_t position, std::size_t count) const {
  const std::size_t rows = Rows().size();
  std::vector<Bookmark> wanted;
  for (; wanted.size() < count && position < rows; position += static_cast<std::size_t>(step_)) {
    wanted.push_back(Rows()[position]);
  }
  if (read_.size() >= kMostRowsKept) read_.clear();
  read_at_ = std::chrono::steady_clock::now();
  store_->ReadRows(
      wanted, [&](Bookmark row, std::vector<Value>& fields) { Room(row) = std::move(fields); });
}

void StoreRecordset::BeginEdit(EditMode mode, Bookmark row, std::vector<Value> fields) {
  mode_ = mode;
  const bool add = mode == EditMode::Add;
  edit_ = {add ? RowChange::Kind::Insert : RowChange::Kind::Update, row, 0, {}};
  buffer_ = std::move(fields);
}

void StoreRecordset::AddNew() {
  BeginEdit(EditMode::Add, 0, std::vector<Value>(LineTable().Fields.size()));
}

void StoreRecordset::Edit() {
  const Bookmark row = Rows()[CurrentRow()];
  // Another program may have changed the row, unless an open commit keeps it out.
  if (!store_->Connection().InTransaction()) read_.clear();
  BeginEdit(EditMode::InProgress, row, CurrentFields());
}

void StoreRecordset::WriteEdit() {
  edit_.Values.clear();
  for (std::size_t i = 0; i < buffer_.size(); ++i) {
    if ((edit_.Fields >> i & 1U) != 0) edit_.Values.push_back(buffer_[i]);
  }
  store_->Writes().Write(edit_);
}

// A store that cannot be written is found out here and not at AddNew, so that a line that cannot be
// saved is one report, and not one for each field.
void StoreRecordset::Update() {
  if (mode_ == EditMode::None) RefuseWithoutEdit();
  RefuseReadOnly(*store_);
  if (mode_ == EditMode::InProgress && edit_.Fields == 0) {
    mode_ = EditMode::None;
    return;
  }
  const std::uint64_t before = store_->Writes().Changes();
  WriteEdit();
  if (mode_ == EditMode::Add) rows_.push_back(edit_.Row);
  // With this write alone between, what was read for the edit and then changed is the row now, and
  // all other rows are as they were.
  const std::uint64_t now = store_->Writes().Changes();
  if (mode_ == EditMode::InProgress && read_change_ == before && now == before + 1) {
    read_[edit_.Row] = std::move(buffer_);
    read_change_ = now;
  }
  mode_ = EditMode::None;
}

void StoreRecordset::Delete() {
  const std::size_t place = CurrentRow();
  mode_ = EditMode::None;
  RowChange change{RowChange::Kind::Delete, Rows()[place], 0, {}};
  store_->Writes().Write(change);
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place));
  RowRemoved();
}

int StoreRecordset::FieldCount() const { return static_cast<int>(LineTable().Fields.size()); }

int StoreRecordset::OrdinalOf(std::string_view name) const {
  const int ordinal = LineFieldOrdinal(name);
  if (ordinal < 0) RefuseUnknownField(name);
  return ordinal;
}

Value StoreRecordset::GetField(int ordinal) const {
  const auto& fields = mode_ == EditMode::None ? CurrentFields() : buffer_;
  return fields[static_cast<std::size_t>(ordinal)];
}

void StoreRecordset::SetField(int ordinal, const Value& value) {
  if (mode_ == EditMode::None) RefuseWithoutEdit();
  buffer_[static_cast<std::size_t>(ordinal)] = ValueForField(Definition(ordinal), value);
  edit_.Fields |= 1U << static_cast<unsigned>(ordinal);
}

int StoreRecordset::FieldSize(int ordinal) const {
  switch (Definition(ordinal).Type) {
    case FieldType::Single:
      return 4;
    case FieldType::Double:
    case FieldType::Date:
      return 8;
    case FieldType::Text:
      return Definition(ordinal).Size;
  }
  return 0;
}

std::string StoreRecordset::FieldName(int ordinal) const { return Definition(ordinal).Name; }

std::vector<Value> StoreRecordset::RowAt(std::size_t position) const {
  std::vector<Value> fields;
  if (!store_->ReadRow(BookmarkAt(position), fields)) fields.clear();
  return fields;
}

}  // namespace ostrel
