#pragma once

// Employee names: the office's table gives a line its name when it is written. A number that the
// office does not list is accepted; its line simply has no name.

#include <cstdint>

#include "frame/failure_reporting.h"
#include "platform/database/recordset.h"

namespace ostrel {

/// Puts the employee's SORT_NAME into a line being written: one blank where the office has no such
/// employee or the name is empty, Null where it is Null. Leaves the office's table on the employee,
/// so that the next line of the same employee needs no search. Uses the statements `line` to
/// `line` + 3 of the caller's tail.
void SetSortName(const FailureTail& statement, std::int32_t line, const Recordset& timecard,
                 std::int32_t EmplNumb);

}  // namespace ostrel
