#pragma once

// The walk over a reference table: all its rows in memory, in file order or, once an index is set,
// in the order of the table's key. Made by the folder of tables (table_folder.h).

#include <cstdint>
#include <string>
#include <vector>

#include "platform/database/dbf_file.h"
#include "platform/database/walked_recordset.h"

namespace ostrel {

class TableRecordset : public WalkedRecordset {
 public:
  ///   rows      the numbers of the rows to walk, in order
  ///   keyField  of the index, in a table that has the field
  TableRecordset(DbfTable table, std::vector<std::uint32_t> rows, std::string keyField);

  // The rows are the office's and read-only: Failure 3027.
  void AddNew() override;
  void Edit() override;
  void Update() override;
  void Delete() override;
  void SetField(int ordinal, const Value& value) override;

  /// A bookmark is the row's number in the file, so it outlives a change of order.
  void SetBookmark(Bookmark bookmark) override;
  Bookmark BookmarkAt(std::size_t position) const override;

  int FieldCount() const override;
  int OrdinalOf(std::string_view name) const override;
  Value GetField(int ordinal) const override;
  int FieldSize(int ordinal) const override;
  std::string FieldName(int ordinal) const override;

  std::size_t RowCount() const override { return rows_.size(); }
  std::vector<Value> StoredRowAt(std::size_t position) const override;

  /// The one index is "PrimaryIndex". Its key is the key field where there is one, else the first
  /// numeric field, since the index files that come with a table are not read. A Null key
  /// stands first, equal keys stand in file order.
  ///   throws  Failure 3265 for another name, or when the table has no numeric field
  void SetIndex(std::string_view name) override;

  /// By bisection in the order of the index.
  ///   throws  Failure 3019 with no index set, 5 for a comparison other than "=" and ">=", 13 for a
  ///           key that is no number
  void Seek(std::string_view comparison, const Value& key) override;
  bool NoMatch() const override { return noMatch_; }

 private:
  int KeyField() const;  ///< -1 when the table has no numeric field

  DbfTable table_;
  std::string key_field_;
  std::vector<std::uint32_t> rows_;
  std::vector<double> keys_;  // of rows_, ascending, when an index is set
  bool isIndexed_ = false;
  bool noMatch_ = false;
};

}  // namespace ostrel
