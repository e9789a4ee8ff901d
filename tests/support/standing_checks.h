#pragma once

// What must hold whenever a command is back, whatever was answered meanwhile; worked out from the raw
// lines of the file, with nothing of the program's own arithmetic.

#include <string>

#include "support/outside_store.h"
#include "support/payroll.h"

namespace ostrel {

/// Looked for: nobody holds the store; the rows on show are read by everybody exactly as they show;
/// a kill now would lose nothing of it; the quantity box is open or shut as layout and event say.
///   lines    as everybody reads them
///   returns  what does not hold: "a word or two: the particulars", or ""
std::string StandingFault(const Payroll& laptop, const OutsideStore& store, const RawLines& lines);

}  // namespace ostrel
