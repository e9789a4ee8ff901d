#include "platform/database/walked_recordset.h"

#include "platform/values/failure.h"

namespace ostrel {
namespace {

[[noreturn]] void RefuseWithoutRow() {
  throw Failure(failure_number::kNoCurrentRecord, "No current record.");
}

}  // namespace

void WalkedRecordset::MoveTo(std::size_t row) {
  place_ = row < RowCount() ? Place::On : Place::Behind;
  row_ = row;
}

void WalkedRecordset::MoveLast() {
  const std::size_t count = RowCount();
  MoveTo(count == 0 ? 0 : count - 1);
}

void WalkedRecordset::MoveNext() {
  switch (place_) {
    case Place::Before:
      return MoveTo(0);
    case Place::On:
      return MoveTo(row_ + 1);
    case Place::Removed:
      return MoveTo(row_);
    case Place::Behind:
      RefuseWithoutRow();
  }
}

void WalkedRecordset::MovePrevious() {
  const std::size_t row = place_ == Place::Behind ? RowCount() : row_;
  if (place_ == Place::Before || Empty()) RefuseWithoutRow();
  if (row > 0) return MoveTo(row - 1);
  MoveTo(0);
  place_ = Place::Before;
}

Bookmark WalkedRecordset::BookmarkAt(std::size_t position) const {
  return static_cast<Bookmark>(position);
}

std::ptrdiff_t WalkedRecordset::Position() const {
  return HasRow() ? static_cast<std::ptrdiff_t>(row_) : -1;
}

void WalkedRecordset::LeaveRows() {
  place_ = Place::Removed;
  row_ = 0;
}

std::size_t WalkedRecordset::CurrentRow() const {
  if (!HasRow()) RefuseWithoutRow();
  return row_;
}

}  // namespace ostrel
