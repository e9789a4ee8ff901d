#pragma once

// How the fields of a store's table take values, and how the file gives them back.

#include "platform/database/sqlite_connection.h"
#include "platform/database/table_definition.h"
#include "platform/values/value.h"

namespace ostrel {

/// The value as the field keeps it: a text turned into a number or a moment, a number cut to single
/// precision. Null stays Null.
///   throws  Failure 3163 for a text longer than the field; 3421 for a value that the type cannot
///           take; 6 for a number beyond its range
Value ValueForField(const FieldDefinition& field, const Value& value);

/// What a column of the row that a statement stands on holds, as a value of the field's type.
Value ColumnValue(const SqliteStatement& row, int column, FieldType type);

}  // namespace ostrel
