#pragma once

// The payroll's one table, OstrelPr, and the file that holds it: what a client's store is made from,
// known by and opened as.
//
// A line's fields, in the table's order: EMPL_NUMB, SORT_NAME, ETIME (date and time of the event),
// ETIME_STOP (never written), EVENT_TYPE ("I" clock-in, "O" clock-out, "P" piecework, "X" a line of
// the plain layout), QUANTITY, QUAN_DESC, ENTERPRISE, OPERATION, EQUIP_NUMB, MEMO, RATE (-9 is the
// standard hourly rate), GROSS, HOUR_GROSS, HOURS. A field that no writer sets is Null; a text field
// is never empty, one blank takes the place of the empty text.

#include <string>

#include "platform/database/open_stores.h"

namespace ostrel {

/// Table, index and marks of a timecard store. Older and newer versions of the program must agree on
/// them, since each refuses a file that differs.
const StoreFormat& TimecardFormat();

/// The timecard store in a file; see OpenDatabase.
Database OpenTimecards(const std::string& path, StoreCheck check = StoreCheck::Whole);

}  // namespace ostrel
