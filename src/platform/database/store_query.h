#pragma once

// A query of the dialect as a question that SQLite answers over the store's table. Literals become
// parameters, so that one prepared statement serves every day and every employee.

#include <optional>
#include <string>
#include <vector>

#include "platform/database/database.h"
#include "platform/database/sql_dialect.h"
#include "platform/values/value.h"

namespace ostrel {

struct StoreQuestion {
  std::string Sql;
  std::string Expression;  ///< what stands between SELECT and FROM
  std::vector<Value> Parameters;
  FieldType Answer = FieldType::Double;  ///< of a Distinct, Max or Last
};

/// Selections give row ids. Among equals the line entered first comes first, or last where the last
/// order term is descending; where no order is asked for, lines come as they were entered. Last is
/// the value in the line entered last, whatever order an index would give.
///   throws  Failure 3078 for another table than the store's, 3061 for an unknown field, 3421 for a
///           text compared with a number or the other way round
///   derived  rows that are no rows of the table, as SQL of the form "VALUES (..),(..)", or empty;
///            lists and aggregates see them, Last apart
StoreQuestion QuestionFor(const Query& query, const std::string& derived = {});

/// One such row: values of all fields in the table's order.
std::string DerivedRowSql(const std::vector<Value>& values);

/// The selection "INT(ETIME) = #d# and EMPL_NUMB = n order by ETIME", which the hours of a day ask
/// once for each employee.
struct DayOfEmployee {
  double Day = 0;
  float EmplNumb = 0;
};
std::optional<DayOfEmployee> AsDayOfEmployee(const Query& query);

}  // namespace ostrel
