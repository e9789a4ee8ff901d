#include "platform/database/table_definition.h"

#include <algorithm>
#include <utility>

#include "platform/values/text.h"

namespace ostrel {

// Nearly all callers spell a name as the table does, and letters are costly to fold.
int FieldOrdinal(const TableDefinition& table, std::string_view name) {
  const auto& fields = table.Fields;
  auto field = std::find_if(fields.begin(), fields.end(),
                            [&](const FieldDefinition& each) { return each.Name == name; });
  if (field == fields.end()) {
    field = std::find_if(fields.begin(), fields.end(),
                         [&](const FieldDefinition& each) { return SameText(each.Name, name); });
  }
  return field == fields.end() ? -1 : static_cast<int>(field - fields.begin());
}

std::string ColumnType(const FieldDefinition& field) {
  switch (field.Type) {
    case FieldType::Single:
      return "FLOAT";
    case FieldType::Double:
      return "DOUBLE";
    case FieldType::Date:
      return "REAL";
    case FieldType::Text:
      return "VARCHAR(" + std::to_string(field.Size) + ")";
  }
  return {};
}

std::string QuotedName(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

std::string CreationSql(const TableDefinition& table) {
  std::string sql = "CREATE TABLE " + QuotedName(table.Name) + "(";
  const char* joint = "";
  for (const FieldDefinition& field : table.Fields) {
    sql += std::exchange(joint, ", ") + QuotedName(field.Name) + " " + ColumnType(field);
  }
  return sql + ")";
}

}  // namespace ostrel
