#pragma once

// A query of the dialect as a question that SQLite answers over the store's table. Literals become
// parameters, so that one prepared statement serves every day and every employee.

#include <string>
#include <vector>

#include "platform/database/sql_dialect.h"
#include "platform/database/table_definition.h"
#include "platform/values/value.h"

namespace ostrel {

struct StoreQuestion {
  std::string Sql;
  std::vector<Value> Parameters;
  std::vector<FieldType>
      Answer;  ///< kinds of the answer's columns; a Count is one whatever it says
};

/// Selections give row ids. Among equals the line entered first comes first, or last where the last
/// order term is descending; where no order is asked for, lines come as they were entered. Last is
/// the value in the line entered last, whatever order an index would give.
///   table   of the store
///   throws  Failure 3078 for another table than the store's, 3061 for an unknown field, 3421 for a
///           text compared with a number or the other way round
StoreQuestion QuestionFor(const TableDefinition& table, const Query& query);

}  // namespace ostrel
