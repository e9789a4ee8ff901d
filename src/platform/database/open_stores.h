#pragma once

// The stores that are open in this process, by file: all Database objects on one file share one
// store, so they never lock each other out, see each other's rows and gather into one commit.

#include <cstddef>
#include <string>

#include "platform/database/database.h"
#include "platform/database/store_format.h"

namespace ostrel {

/// What opening a store looks through.
enum class StoreCheck { Whole, AllButIndex };

/// Makes a new store with its table, in one step that is there as a whole or not at all.
///   throws  Failure 58 when the file exists (it is left alone), 75/76/61 by the folder's fault
Database CreateDatabase(const std::string& path, const StoreFormat& format);

/// Opens a store to read and write, or to read alone where the file cannot be written. Never
/// creates one. Several open objects on one file may live at once and see each other's rows.
///   check   an index that is about to be made anew may be damaged
///   throws  Failure 3024 not there, 3343 not a store of this format, 3049 damaged (found by a
///           check of the whole file), 3260 locked by another program; the file is left as it was
Database OpenDatabase(const std::string& path, const StoreFormat& format,
                      StoreCheck check = StoreCheck::Whole);

/// Before the program waits for the operator: makes durable what has been gathered on every open
/// store of this process, and gives every file back that is held. Gathering goes on afterwards.
///   throws  the failure of rows that could not be written, once every store has been tried; the rows
///           stay known, and no lock is held all the same
void SettleAllShared();

/// Rows that were told to be written and could not be written again yet, over all open stores.
std::size_t RowsStillLost();

}  // namespace ostrel
