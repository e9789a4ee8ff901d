#pragma once

// The file of a store: how one is made, and what a file must show before it is taken for one. Behind
// OpenDatabase and CreateDatabase of open_stores.h.

#include <memory>
#include <string>

#include "platform/database/sqlite_connection.h"
#include "platform/database/store_format.h"

namespace ostrel {

/// Opens an existing store and looks through the whole of it. The file is only read.
///   withIndex  whether the index must hold every line
///   throws  Failure 3024, 3343, 3049 or 3260, see OpenDatabase
std::unique_ptr<SqliteConnection> OpenStoreFile(const std::string& path, const StoreFormat& format,
                                                bool withIndex);

/// Makes a store with its table, in one step that is there as a whole or not at all.
///   throws  Failure 58, 75, 76 or 61, see CreateDatabase; no file of its own stays behind then
std::unique_ptr<SqliteConnection> CreateStoreFile(const std::string& path,
                                                  const StoreFormat& format);

}  // namespace ostrel
