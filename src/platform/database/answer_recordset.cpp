#include "platform/database/answer_recordset.h"

#include <algorithm>
#include <utility>

#include "platform/database/refusals.h"
#include "platform/values/text.h"

namespace ostrel {

AnswerRecordset::AnswerRecordset(std::vector<std::string> columns,
                                 std::vector<std::vector<Value>> rows)
    : columns_(std::move(columns)), rows_(std::move(rows)) {
  MoveFirst();
}

int AnswerRecordset::OrdinalOf(std::string_view name) const {
  const auto column = std::find_if(columns_.begin(), columns_.end(),
                                   [&](const std::string& each) { return SameText(each, name); });
  if (column == columns_.end()) RefuseUnknownField(name);
  return static_cast<int>(column - columns_.begin());
}

Value AnswerRecordset::GetField(int ordinal) const {
  return rows_[CurrentRow()][static_cast<std::size_t>(ordinal)];
}

int AnswerRecordset::FieldSize(int) const { return 0; }

std::string AnswerRecordset::FieldName(int ordinal) const {
  return columns_[static_cast<std::size_t>(ordinal)];
}

}  // namespace ostrel
