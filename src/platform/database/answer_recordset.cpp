#include "platform/database/answer_recordset.h"

#include <utility>

#include "platform/database/database_body.h"
#include "platform/values/text.h"

namespace ostrel {

AnswerRecordset::AnswerRecordset(std::string column, std::vector<Value> rows)
    : column_(std::move(column)), rows_(std::move(rows)) {
  MoveFirst();
}

int AnswerRecordset::OrdinalOf(std::string_view name) const {
  if (!SameText(name, column_)) RefuseUnknownField(name);
  return 0;
}

Value AnswerRecordset::GetField(int) const { return rows_[CurrentRow()]; }

int AnswerRecordset::FieldSize(int) const { return 0; }

std::string AnswerRecordset::FieldName(int) const { return column_; }

}  // namespace ostrel
