#pragma once

// The grid prints itself: its visible columns in their order, the rows of the view in theirs, the
// page header of its PrintInfo on every sheet. Rows are read and drawn one after the other, so the
// number of pages costs no memory.
//
// On paper a column is as wide as on the screen's design, from the left margin; the last one does not
// run to the edge. Where the sheet is too narrow for all of them, every column gives up the same
// share of its width, so that none is lost, and their texts are drawn narrower.

#include <memory>

#include "platform/desktop/print_job.h"
#include "platform/forms/grid.h"

namespace ostrel {

/// Draws the whole view as one document of the desktop's printer.
///   returns  the finished document; EndDoc sends it off
///   throws   what a row that cannot be read throws, what NewPage throws; nothing is printed then
std::unique_ptr<PrintJob> PrintData(Grid& grid, const PrintJobRequest& request);

}  // namespace ostrel
