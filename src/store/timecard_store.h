#pragma once

// The client's timecard store: one file with the one table (line_table.h), in which every line stays
// until it is deleted. This room brings the file into being, rebuilds its index, opens it for the run
// and binds LinesRs; lines are written and read by the rooms that own them.

#include <string>

#include "platform/database/open_stores.h"
#include "platform/database/recordset.h"

namespace ostrel {

/// Makes the client's store with its table and index. Says so when it cannot.
void CreatePrinMdb();

/// Drops the index by time and makes it anew; makes the store first where there is none. Leaves
/// PrinDb open.
void ReindexPrinMdb();

/// Tells PrinDb and LinesRs how to open themselves. A store that cannot be opened when the program
/// starts, because another program holds it, say, is opened by the first command that needs it.
///   check  what each try looks through
void KeepStoreInReach(StoreCheck check = StoreCheck::Whole);

/// Opens PrinDb, which KeepStoreInReach has prepared.
///   throws  see OpenDatabase; PrinDb tries again when it is next asked
void OpenPrinDb();

/// Before LinesRs is bound to a selection: it is not open until that has succeeded, so that no walk goes
/// over the rows that it was bound to before. A new line goes to the table all the same.
void UnbindLines();

/// Closes what the run has opened of the store. Rows that could not be written yet are tried for the
/// last time.
void CloseStore();

/// Before the program ends: writes what could not be written when the operator was told so.
///   throws  the failure that still keeps it from the disk, saying how many lines are concerned
void WriteLinesStillLost();

/// Puts one blank into a text field of the line being written that holds the empty text; a Null
/// stays Null.
void BlankIfEmpty(const Field& field);

/// Memo of a line being written: cut to the field's size, one blank where it is empty.
void SetMemo(const Recordset& timecard, const std::string& memo);

}  // namespace ostrel
