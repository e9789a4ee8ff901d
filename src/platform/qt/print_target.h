#pragma once

// Where a print job goes: to the machine's printer or into a PDF.

#include <QPagedPaintDevice>
#include <memory>
#include <string>

#include "platform/desktop/print_job.h"

namespace ostrel {

/// Goes without Deliver: nothing comes out.
class PrintTarget {
 public:
  PrintTarget() = default;
  virtual ~PrintTarget() = default;
  PrintTarget(const PrintTarget&) = delete;
  PrintTarget& operator=(const PrintTarget&) = delete;

  virtual QPagedPaintDevice& Device() = 0;

  /// throws  the failure that kept something drawn so far from being kept
  virtual void Check() {}
  /// The painter has let go of the device.
  ///   throws  what Check throws
  virtual void Finish() {}
  /// What PrintJob::EndDoc does.
  virtual std::string Deliver() = 0;
  /// The painter is about to let go of a document that was never finished.
  virtual void GiveUp() {}
};

/// Nothing where no printer is installed.
std::unique_ptr<PrintTarget> MakePrinterTarget(const PrintJobRequest& request);

}  // namespace ostrel
