#pragma once

// Writing numbers back into a dBase table: the one change that the program makes to the office's
// files, to take the year-to-date pay out of them.

#include <string>
#include <vector>

#include "platform/database/sql_dialect.h"

namespace ostrel {

/// Puts numbers into fields of every record, deleted ones included, since pay that is not to stay on
/// the laptop must not stay in a record that is merely marked. Only the bytes of those fields change.
///   file     a table's bytes; `name` is for the messages
/// A 0 goes into fields of every type and width, as whatever comes next to it there: a text becomes "0",
/// a date none.
///   throws   Failure 3274 when it is no table; 3061 for a field that the table does not have; but for
///            0, 3421 for a field that holds no numbers and 6 for a number that it is too narrow for
std::string WithNumbers(std::string file, const std::string& name,
                        const std::vector<Assignment>& assignments);

/// Puts 0 into those of the fields that the table has.
std::string WithZeros(std::string file, const std::string& name,
                      const std::vector<std::string>& fields);

/// WithNumbers in a file, which is replaced as a whole (files/replace_file.h), so it is never half
/// written, and is for its user alone.
///   throws  also Failure 3078 or 3275 by the file; 61, 71, 75 or 57 when it cannot be written, the
///           file being as it was
void WriteNumbers(const std::string& path, const std::vector<Assignment>& assignments);

}  // namespace ostrel
