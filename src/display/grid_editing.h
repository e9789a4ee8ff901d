#pragma once

// Grid editing: what the grid's own writing of a changed cell cannot do. A new employee number
// brings the name with it, the date and time cells make one moment, and a letter in the rate cell is
// the standard rate. Hours, gross and totals are not worked out again here.

#include <cstdint>

#include "platform/values/value.h"

namespace ostrel {

/// A changed cell is about to be written.
///   ColIndex  the column's number
///   Cancel    out: true where the grid shall not write the cell itself
void TDBGrid1_BeforeColUpdate(int ColIndex, const Value& OldValue, std::int16_t& Cancel);

/// A character typed in the grid; it is not altered.
void TDBGrid1_KeyPress(int& KeyAscii);

}  // namespace ostrel
