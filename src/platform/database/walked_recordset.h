#pragma once

// The walk that every kind of recordset shares: a place among numbered rows, by the rules of
// recordset.h. A kind brings RowCount and the rows; it calls MoveFirst when it is made, or may leave
// that out while it has rows.

#include "platform/database/recordset_body.h"

namespace ostrel {

class WalkedRecordset : public RecordsetBody {
 public:
  bool Bof() const override { return place_ == Place::Before || Empty(); }
  bool Eof() const override { return place_ == Place::Behind || Empty(); }
  void MoveFirst() override { MoveTo(0); }
  void MoveLast() override;
  void MoveNext() override;
  void MovePrevious() override;

  // Positions serve as bookmarks where rows have no lasting identity of their own.
  Bookmark GetBookmark() const override { return BookmarkAt(CurrentRow()); }
  void SetBookmark(Bookmark bookmark) override { MoveTo(static_cast<std::size_t>(bookmark)); }
  Bookmark BookmarkAt(std::size_t position) const override;

  std::ptrdiff_t Position() const override;
  void SetPosition(std::size_t position) override { MoveTo(position); }

 protected:
  /// Onto a row; behind the last one when there is no such row.
  virtual void MoveTo(std::size_t row);

  /// The current row has been taken out of the rows: none is current, and MoveNext goes to the row
  /// that has its number now.
  void RowRemoved() { place_ = Place::Removed; }

  /// No row is current, as after a seek that found nothing; MoveNext goes to the first row.
  void LeaveRows();

  bool HasRow() const { return place_ == Place::On && row_ < RowCount(); }
  std::size_t CurrentRow() const;  ///< throws Failure 3021 with no current row

 private:
  enum class Place { Before, On, Removed, Behind };
  bool Empty() const { return place_ != Place::Removed && RowCount() == 0; }

  Place place_ = Place::On;
  std::size_t row_ = 0;  // the current one, or the one behind the removed one
};

}  // namespace ostrel
