#pragma once

// Whether the index of a store holds every row of the table, once, and in order. Rows are looked up by
// the index, so one that it has lost would not be found.

#include <string_view>

#include "platform/database/sqlite_connection.h"
#include "platform/database/store_format.h"

namespace ostrel {

bool HasIndex(SqliteConnection& connection, std::string_view table, std::string_view index);

/// True also where there is no index: then the rows are found without one. An index of the name over
/// part of the rows, or by another field, holds too few.
///   throws  Failure 3049 where SQLite itself finds a page damaged
bool IndexHoldsEveryRow(SqliteConnection& connection, const StoreFormat& format);

}  // namespace ostrel
