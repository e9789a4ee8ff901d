#pragma once

// What a table of a store is made of, and how SQL writes it down.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

/// Types of the store's fields; the numbers are the system's own.
enum class FieldType : std::int16_t { Single = 6, Double = 7, Date = 8, Text = 10 };

struct FieldDefinition {
  std::string Name;
  FieldType Type = FieldType::Double;
  int Size = 0;  ///< characters, Text only
};

struct TableDefinition {
  std::string Name;
  std::vector<FieldDefinition> Fields;  ///< no more than 32
};

/// Place of a field by its name in any case; -1 when the table has no such field.
int FieldOrdinal(const TableDefinition& table, std::string_view name);

/// The type that a column is declared with in the file. The names are chosen so that SQLite keeps
/// every number as a REAL; a date is one too, in days since 30 December 1899.
std::string ColumnType(const FieldDefinition& field);

/// A name as it stands in SQL.
std::string QuotedName(std::string_view name);

/// The statement that makes a table in the file.
std::string CreationSql(const TableDefinition& table);

}  // namespace ostrel
