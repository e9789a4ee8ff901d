#pragma once

// The answer of a query for values: the distinct values of a field, or one row of aggregates. It is
// read-only and no longer tied to the table it was asked of.

#include <string>
#include <vector>

#include "platform/database/walked_recordset.h"

namespace ostrel {

class AnswerRecordset : public WalkedRecordset {
 public:
  AnswerRecordset(std::vector<std::string> columns, std::vector<std::vector<Value>> rows);

  int FieldCount() const override { return static_cast<int>(columns_.size()); }
  int OrdinalOf(std::string_view name) const override;
  Value GetField(int ordinal) const override;
  int FieldSize(int ordinal) const override;
  std::string FieldName(int ordinal) const override;

  std::size_t RowCount() const override { return rows_.size(); }
  std::vector<Value> StoredRowAt(std::size_t position) const override { return rows_.at(position); }

 private:
  std::vector<std::string> columns_;
  std::vector<std::vector<Value>> rows_;
};

}  // namespace ostrel
