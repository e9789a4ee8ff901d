#pragma once

// A walk over rows of a store: the row ids of a selection, in order, and one edit buffer. A row's
// fields are asked of the store when one of them is asked for, which reads it once while it holds the
// file (transactions.h) and each time otherwise.

#include <cstddef>
#include <vector>

#include "platform/database/row_change.h"
#include "platform/database/store_rows.h"
#include "platform/database/walked_recordset.h"

namespace ostrel {

/// The table as it stands: every row up to the highest id at opening.
struct WholeTable {
  Bookmark Highest = 0;  ///< 0 in an empty table
};

class StoreRecordset : public WalkedRecordset {
 public:
  StoreRecordset(StoreRows store, std::vector<Bookmark> rows);
  /// The rows are listed when the first of them is asked for: one that only adds lines never pays
  /// for the list.
  StoreRecordset(StoreRows store, WholeTable table);

  void AddNew() override;
  void Edit() override;
  void Update() override;
  void CancelUpdate() override { mode_ = EditMode::None; }
  void Delete() override;
  EditMode Mode() const override { return mode_; }

  void SetBookmark(Bookmark bookmark) override;

  int FieldCount() const override;
  int OrdinalOf(std::string_view name) const override;
  Value GetField(int ordinal) const override;
  void SetField(int ordinal, const Value& value) override;
  int FieldSize(int ordinal) const override;
  std::string FieldName(int ordinal) const override;

  std::size_t RowCount() const override { return Rows().size(); }
  Bookmark BookmarkAt(std::size_t position) const override { return Rows().at(position); }
  std::vector<Value> StoredRowAt(std::size_t position) const override;
  std::vector<Value> RowToShow(std::size_t position, bool& asStored) const override;

 protected:
  void MoveTo(std::size_t row) override;

 private:
  const std::vector<Bookmark>& Rows() const;
  const FieldDefinition& Definition(int ordinal) const;
  RowFields CurrentFields() const;
  void RefuseIfNotAsShown(Bookmark row, const RowFields& now) const;
  void BeginEdit(RowChange change, std::vector<Value> fields);

  StoreRows store_;
  mutable std::vector<Bookmark> rows_;
  mutable Bookmark unlisted_ = 0;    // rows up to this id are still to be listed before rows_
  mutable bool is_on_show_ = false;  // somebody shows its rows on a screen

  EditMode mode_ = EditMode::None;
  RowChange edit_;             // the row, and the fields assigned so far
  std::vector<Value> buffer_;  // all fields as the edit sees them
};

}  // namespace ostrel
