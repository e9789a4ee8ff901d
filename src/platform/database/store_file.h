#pragma once

// The file of a timecard store: how one is made, and what a file must show before it is taken for
// one. Behind OpenDatabase and CreateDatabase of database.h.

#include <memory>
#include <string>

#include "platform/database/database.h"
#include "platform/database/sqlite_connection.h"

namespace ostrel {

/// Opens an existing store and looks through the whole of it. The file is only read.
///   throws  Failure 3024, 3343, 3049 or 3260, see OpenDatabase
std::unique_ptr<SqliteConnection> OpenStoreFile(const std::string& path, StoreCheck check);

/// Makes a store with its table, in one step that is there as a whole or not at all.
///   throws  Failure 58, 75, 76 or 61, see CreateDatabase; no file of its own stays behind then
std::unique_ptr<SqliteConnection> CreateStoreFile(const std::string& path);

}  // namespace ostrel
