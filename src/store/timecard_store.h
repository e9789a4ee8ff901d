#pragma once

// The timecard store: one file per client with the one table OstrelPr, in which every line stays
// until it is deleted. This room brings the file into being and rebuilds its index; lines are
// written and read by the rooms that own them.
//
// A line's fields, in the table's order: EMPL_NUMB, SORT_NAME, ETIME (date and time of the event),
// ETIME_STOP (never written), EVENT_TYPE ("I" clock-in, "O" clock-out, "P" piecework, "X" a line of
// the plain layout), QUANTITY, QUAN_DESC, ENTERPRISE, OPERATION, EQUIP_NUMB, MEMO, RATE (-9 is the
// standard hourly rate), GROSS, HOUR_GROSS, HOURS. A field that no writer sets is Null; a text field
// is never empty, one blank takes the place of the empty text.

#include <string>

#include "platform/database/recordset.h"

namespace ostrel {

/// Makes the client's store with its table and index. Says so when it cannot.
void CreatePrinMdb();

/// Drops the index by time and makes it anew; makes the store first where there is none. Leaves
/// PrinDb open.
void ReindexPrinMdb();

/// Puts one blank into a text field of the line being written that holds the empty text; a Null
/// stays Null.
void BlankIfEmpty(const Field& field);

/// Memo of a line being written: cut to the field's size, one blank where it is empty.
void SetMemo(const Recordset& timecard, const std::string& memo);

}  // namespace ostrel
