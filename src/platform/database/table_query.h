#pragma once

// Answers the lookups' questions to a reference table: which rows, which distinct values of a field,
// which sum, maximum, count or last value. The query comes as read by sql_dialect.h, the table as
// read by dbf_file.h; nothing here touches a file.

#include <cstdint>
#include <vector>

#include "platform/database/dbf_file.h"
#include "platform/database/sql_dialect.h"

namespace ostrel {

/// Numbers of the rows that pass the query's tests, in its order; file order where it asks for none
/// and among equals. A Null passes no test and stands before every value. Texts compare without
/// regard to case.
///   throws  Failure 3061 for a field that the table does not have, 3421 for a text that is
///           compared with a number or the other way round
std::vector<std::uint32_t> SelectRows(const DbfTable& table, const Query& query);

/// The rows of the answer to a Distinct or aggregate query. Distinct values come in ascending order, a
/// row each; aggregates are one row. Last is the last row of the file that passes; Sum, Max and Last
/// over no rows are Null.
///   throws  as SelectRows; 3421 for the sum of a field that is no number
std::vector<std::vector<Value>> Answer(const DbfTable& table, const Query& query);

}  // namespace ostrel
