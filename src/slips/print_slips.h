#pragma once

// Slips on paper: four to a sheet with lines to cut along, all in one document. A slip that is longer
// than its quarter goes on in the next one, which says so; the totals and the line for the signature
// stand together at the end of the last, so that nobody signs a part for the whole. A sheet too small
// for quarters takes one slip.

#include <memory>
#include <vector>

#include "platform/desktop/print_job.h"
#include "slips/slips.h"

namespace ostrel {

/// Draws all slips as one document of the desktop's printer.
///   slips    at least one
///   returns  the finished document; EndDoc sends it off
///   throws   what NewPage throws; nothing is printed then
std::unique_ptr<PrintJob> PrintSlips(const std::vector<Slip>& slips, SlipLanguage language,
                                     const PrintJobRequest& request);

}  // namespace ostrel
