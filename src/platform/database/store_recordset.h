#pragma once

// A walk over lines of the store: the row ids of a selection, in order, and one edit buffer. The
// current row's fields are read when one of them is asked for, and again once anything in the store
// has been written; what another program writes shows when the row is next moved to or edited. A
// walk row by row reads ahead, since each look at the file takes and gives back its lock; rows read
// ahead are good for some milliseconds only.

#include <chrono>
#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/database/store.h"
#include "platform/database/walked_recordset.h"

namespace ostrel {

/// The table as it stands: every row up to the highest id at opening.
struct WholeTable {
  Bookmark Highest = 0;  ///< 0 in an empty table
};

class StoreRecordset : public WalkedRecordset {
 public:
  StoreRecordset(std::shared_ptr<Store> store, std::vector<Bookmark> rows);
  /// The rows are listed when the first of them is asked for: one that only adds lines never pays
  /// for the list.
  StoreRecordset(std::shared_ptr<Store> store, WholeTable table);

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
  std::vector<Value> RowAt(std::size_t position) const override;

 protected:
  void MoveTo(std::size_t row) override;

 private:
  const std::vector<Bookmark>& Rows() const;
  const std::vector<Value>& CurrentFields() const;
  void ReadFrom(std::size_t position, std::size_t count) const;
  bool IsRead(Bookmark row) const;
  std::vector<Value>& Room(Bookmark row) const;
  void BeginEdit(EditMode mode, Bookmark row, std::vector<Value> fields);
  void WriteEdit();

  std::shared_ptr<Store> store_;
  mutable std::vector<Bookmark> rows_;
  mutable Bookmark unlisted_ = 0;  // rows up to this id are still to be listed before rows_

  // Rows as last read, good while the store's change count stands: the current row and those read
  // ahead, and while an open commit keeps other programs out, the rows read before it as well.
  mutable std::unordered_map<Bookmark, std::vector<Value>> read_;
  mutable std::uint64_t read_change_ = 0;
  mutable std::chrono::steady_clock::time_point read_at_;
  std::ptrdiff_t step_ = 0;        // 1 or -1 while a walk goes row by row
  mutable std::size_t ahead_ = 1;  // how many rows the walk reads at a time
  std::size_t moved_to_ = 0;

  EditMode mode_ = EditMode::None;
  RowChange edit_;             // the row, and the fields assigned so far
  std::vector<Value> buffer_;  // all fields as the edit sees them
};

}  // namespace ostrel
