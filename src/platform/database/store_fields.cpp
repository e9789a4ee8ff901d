#include "platform/database/store_fields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

#include "platform/values/dates.h"
#include "platform/values/failure.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

/// What a text does not spell, the field refuses; a number too large stays an overflow.
template <typename Read>
auto ReadText(const FieldDefinition& field, const std::string& text, Read read) {
  try {
    return read(text);
  } catch (const Failure& failure) {
    if (failure.Number != failure_number::kTypeMismatch) throw;
    throw Failure(failure_number::kFieldConversion,
                  "The field " + field.Name + " does not take \"" + LeftOf(text, 40) + "\".");
  }
}

double FiniteNumber(const FieldDefinition& field, double number) {
  if (std::isfinite(number)) return number;
  throw Failure(failure_number::kOverflow,
                "Overflow: the number is too large for " + field.Name + ".");
}

double NumberForField(const FieldDefinition& field, const Value& value) {
  if (!value.IsText()) return FiniteNumber(field, value.NumberOrZero());
  return ReadText(field, value.Characters(), WholeNumberText);
}

Value MomentForField(const FieldDefinition& field, const Value& value) {
  if (!value.IsText()) return Moment{FiniteNumber(field, value.NumberOrZero())};
  return ReadText(field, value.Characters(), MomentFrom);
}

Value TextForField(const FieldDefinition& field, const Value& value) {
  std::string text = value.ToText();
  const auto size = static_cast<std::size_t>(field.Size);
  if (text.size() > size && LengthOf(text) > size) {
    throw Failure(failure_number::kFieldTooSmall, "The field " + field.Name +
                                                      " is too small for the text; it takes " +
                                                      std::to_string(field.Size) + " characters.");
  }
  return text;
}

}  // namespace

const TableDefinition& LineTable() {
  static const TableDefinition table{std::string(kLineTableName),
                                     {{"EMPL_NUMB", FieldType::Single},
                                      {"SORT_NAME", FieldType::Text, 15},
                                      {"ETIME", FieldType::Date},
                                      {"ETIME_STOP", FieldType::Date},
                                      {"EVENT_TYPE", FieldType::Text, 1},
                                      {"QUANTITY", FieldType::Double},
                                      {"QUAN_DESC", FieldType::Text, 5},
                                      {"ENTERPRISE", FieldType::Single},
                                      {"OPERATION", FieldType::Single},
                                      {"EQUIP_NUMB", FieldType::Single},
                                      {"MEMO", FieldType::Text, 20},
                                      {"RATE", FieldType::Double},
                                      {"GROSS", FieldType::Double},
                                      {"HOUR_GROSS", FieldType::Double},
                                      {"HOURS", FieldType::Double}}};
  return table;
}

int LineFieldOrdinal(std::string_view name) {
  const auto& fields = LineTable().Fields;
  static const auto byName = [&] {
    std::unordered_map<std::string_view, int> ordinals;
    for (const FieldDefinition& field : fields) {
      ordinals.emplace(field.Name, static_cast<int>(ordinals.size()));
    }
    return ordinals;
  }();
  const auto known = byName.find(name);
  if (known != byName.end()) return known->second;
  const auto field = std::find_if(fields.begin(), fields.end(), [&](const FieldDefinition& each) {
    return SameText(each.Name, name);
  });
  return field == fields.end() ? -1 : static_cast<int>(field - fields.begin());
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

Value ValueForField(const FieldDefinition& field, const Value& value) {
  if (value.IsNull()) return {};
  switch (field.Type) {
    case FieldType::Single: {
      const double number = NumberForField(field, value);
      constexpr double largest = std::numeric_limits<float>::max();
      // Compared before it is cut, since a double beyond the range of a float must not be cut at all.
      return static_cast<float>(
          FiniteNumber(field, std::abs(number) > largest ? HUGE_VAL : number));
    }
    case FieldType::Double:
      return NumberForField(field, value);
    case FieldType::Date:
      return MomentForField(field, value);
    case FieldType::Text:
      return TextForField(field, value);
  }
  return {};
}

}  // namespace ostrel
