#pragma once

// The one table of a timecard store, and how its fields take values.

#include <string>
#include <string_view>

#include "platform/database/database.h"
#include "platform/values/value.h"

namespace ostrel {

inline constexpr std::string_view kLineTableName = "OstrelPr";

// Places of the two fields that selections and indexes go by.
inline constexpr int kEmplNumbField = 0;
inline constexpr int kEtimeField = 2;

/// Table OstrelPr: fifteen fields whose order matters, since lines are copied by ordinal.
const TableDefinition& LineTable();

/// Place of a field by its name in any case; -1 when the table has no such field.
int LineFieldOrdinal(std::string_view name);

/// The type that a column is declared with in the file. The names are chosen so that SQLite keeps
/// every number as a REAL; a date is one too, in days since 30 December 1899.
std::string ColumnType(const FieldDefinition& field);

/// A name as it stands in SQL.
std::string QuotedName(std::string_view name);

/// The statement that makes a table in the file.
std::string CreationSql(const TableDefinition& table);

/// The value as the field keeps it: a text turned into a number or a moment, a number cut to single
/// precision. Null stays Null.
///   throws  Failure 3163 for a text longer than the field; 3421 for a value that the type cannot
///           take; 6 for a number beyond its range
Value ValueForField(const FieldDefinition& field, const Value& value);

}  // namespace ostrel
