#pragma once

// A print job as a PDF. Its text is text: it can be searched and copied.

#include <QPageSize>
#include <QPdfWriter>
#include <string>

#include "platform/qt/pdf_file.h"
#include "platform/qt/print_target.h"

namespace ostrel {

class PdfTarget : public PrintTarget {
 public:
  /// A file of its own under the name of the request, kept by Deliver.
  static std::unique_ptr<PrintTarget> Make(const PrintJobRequest& request);

  PdfTarget(NewFile file, const std::string& title, const QPageSize& sheet);

  QPagedPaintDevice& Device() override { return writer_; }
  void Check() override { file_.Check(); }
  void Finish() override { file_.Flush(); }
  std::string Deliver() override;

 protected:
  const std::string& Path() const { return file_.Path(); }

 private:
  PdfFile file_;
  QPdfWriter writer_;
};

}  // namespace ostrel
