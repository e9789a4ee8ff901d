#pragma once

// Whether the index of the store holds every line of the table, once, and in order. A day is looked
// up by the index, so a line that it has lost would not go to the office.

#include <string_view>

#include "platform/database/sqlite_connection.h"

namespace ostrel {

bool HasIndex(SqliteConnection& connection, std::string_view table, std::string_view index);

/// True also where there is no index: then the lines are found without one.
///   throws  Failure 3049 where SQLite itself finds a page damaged
bool IndexHoldsEveryLine(SqliteConnection& connection);

}  // namespace ostrel
