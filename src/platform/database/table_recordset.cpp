#include "platform/database/table_recordset.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

#include "platform/database/dbf_values.h"
#include "platform/database/refusals.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

constexpr double kNullKey = -std::numeric_limits<double>::infinity();

[[noreturn]] void RefuseChange() {
  throw Failure(failure_number::kNotUpdatable, "Cannot update: the office's tables are read-only.");
}

}  // namespace

TableRecordset::TableRecordset(DbfTable table, std::vector<std::uint32_t> rows,
                               std::string keyField)
    : table_(std::move(table)), key_field_(std::move(keyField)), rows_(std::move(rows)) {
  MoveFirst();
}

void TableRecordset::AddNew() { RefuseChange(); }
void TableRecordset::Edit() { RefuseChange(); }
void TableRecordset::Update() { RefuseChange(); }
void TableRecordset::Delete() { RefuseChange(); }
void TableRecordset::SetField(int, const Value&) { RefuseChange(); }

void TableRecordset::SetBookmark(Bookmark bookmark) {
  const auto found = std::find(rows_.begin(), rows_.end(), bookmark);
  if (found == rows_.end()) {
    throw Failure(failure_number::kDeletedRecord, "There is no row of this bookmark.");
  }
  MoveTo(static_cast<std::size_t>(found - rows_.begin()));
}

Bookmark TableRecordset::BookmarkAt(std::size_t position) const { return rows_.at(position); }

int TableRecordset::FieldCount() const { return static_cast<int>(table_.Fields().size()); }

int TableRecordset::OrdinalOf(std::string_view name) const {
  const int ordinal = table_.FieldIndex(name);
  if (ordinal < 0) RefuseUnknownField(name);
  return ordinal;
}

Value TableRecordset::GetField(int ordinal) const {
  return table_.At(rows_[CurrentRow()], static_cast<std::size_t>(ordinal));
}

int TableRecordset::FieldSize(int ordinal) const {
  return static_cast<int>(table_.Fields()[static_cast<std::size_t>(ordinal)].Length);
}

std::string TableRecordset::FieldName(int ordinal) const {
  return table_.Fields()[static_cast<std::size_t>(ordinal)].Name;
}

std::vector<Value> TableRecordset::StoredRowAt(std::size_t position) const {
  const std::uint32_t row = rows_.at(position);
  std::vector<Value> values;
  values.reserve(table_.Fields().size());
  for (std::size_t field = 0; field < table_.Fields().size(); ++field) {
    values.push_back(table_.At(row, field));
  }
  return values;
}

void TableRecordset::SetIndex(std::string_view name) {
  const int field = SameText(name, "PrimaryIndex") ? KeyField() : -1;
  if (field < 0) {
    throw Failure(failure_number::kItemNotFound,
                  "The table has no index \"" + std::string(name) + "\".");
  }
  std::vector<std::pair<double, std::uint32_t>> order;
  order.reserve(rows_.size());
  for (const std::uint32_t row : rows_) {
    const auto key = table_.NumberAt(row, static_cast<std::size_t>(field));
    order.emplace_back(key.value_or(kNullKey), row);
  }
  std::sort(order.begin(), order.end());  // row numbers part equal keys
  keys_.resize(order.size());
  for (std::size_t at = 0; at < order.size(); ++at) {
    std::tie(keys_[at], rows_[at]) = order[at];
  }
  isIndexed_ = true;
  MoveFirst();
}

void TableRecordset::Seek(std::string_view comparison, const Value& key) {
  if (!isIndexed_) {
    throw Failure(failure_number::kNoIndexSet, "A search needs an index, and none is set.");
  }
  if (comparison != "=" && comparison != ">=") {
    throw Failure(failure_number::kInvalidCall,
                  "A search by \"" + std::string(comparison) + "\" is not offered.");
  }
  const double wanted = key.IsNull() ? kNullKey : key.ToDouble();
  const auto found = std::lower_bound(keys_.begin(), keys_.end(), wanted);
  noMatch_ = found == keys_.end() || (comparison == "=" && *found != wanted);
  if (!noMatch_) {
    MoveTo(static_cast<std::size_t>(found - keys_.begin()));
  } else if (!rows_.empty()) {  // a table without rows stays at its beginning and end
    LeaveRows();
  }
}

int TableRecordset::KeyField() const {
  const int key = table_.FieldIndex(key_field_);
  if (key >= 0) return key;
  const auto numeric =
      std::find_if(table_.Fields().begin(), table_.Fields().end(),
                   [](const DbfField& field) { return IsDbfNumericType(field.Type); });
  return numeric == table_.Fields().end() ? -1
                                          : static_cast<int>(numeric - table_.Fields().begin());
}

}  // namespace ostrel
