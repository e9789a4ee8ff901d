#pragma once

// The small types that every kind of recordset is spoken to in.

#include <cstdint>

namespace ostrel {

using Bookmark = std::int64_t;

/// What a recordset is doing with its current row; the numbers are the system's own.
enum class EditMode : std::int16_t { None = 0, InProgress = 1, Add = 2 };

/// What to open: 1 a table as it stands, 2 rows that can be updated.
enum class RecordsetType : std::int16_t { Default = 0, Table = 1, Dynaset = 2 };

}  // namespace ostrel
