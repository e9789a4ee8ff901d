#pragma once

// Print jobs drawn with Qt, in the form's own font at 8.25 points whatever the form's size on the
// screen.

#include <memory>

#include "platform/desktop/print_job.h"

namespace ostrel {

/// On the default printer, or as a PDF where none is installed.
std::unique_ptr<PrintJob> StartQtPrintJob(const PrintJobRequest& request);

}  // namespace ostrel
