#pragma once

// What the two printing commands share: how their print jobs are named, and where the operator finds
// the pages when there is no printer.

#include <string>
#include <vector>

#include "platform/desktop/print_job.h"

namespace ostrel {

/// A job that prints the view: "2004-06-14 Displayed lines", "All Employee 130".
///   contents  what stands behind the day
PrintJobRequest ViewOnPaper(const std::string& contents);

/// The detail line of the closing message.
///   files    what EndDoc returned for each job, the empty text for a printed one
///   returns  the empty text when all went to a printer
std::string WhereToFind(const std::vector<std::string>& files);

}  // namespace ostrel
