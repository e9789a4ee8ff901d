#include "platform/database/field_values.h"

#include <cmath>
#include <limits>
#include <string>

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

Value ColumnValue(const SqliteStatement& row, int column, FieldType type) {
  if (row.IsNull(column)) return {};
  switch (type) {
    case FieldType::Single:
      return static_cast<float>(row.Real(column));
    case FieldType::Double:
      return row.Real(column);
    case FieldType::Date:
      return Moment{row.Real(column)};
    case FieldType::Text:
      return row.Text(column);
  }
  return {};
}

}  // namespace ostrel
