#include "platform/qt/pdf_target.h"

#include <QMarginsF>

#include "platform/qt/qt_text.h"

namespace ostrel {

std::unique_ptr<PrintTarget> PdfTarget::Make(const PrintJobRequest& request) {
  // What is filed goes to the office, which has Letter in its folders.
  return std::make_unique<PdfTarget>(CreateNumberedFile(request.Folder, request.Name, ".pdf"),
                                     request.Name, QPageSize(QPageSize::Letter));
}

PdfTarget::PdfTarget(NewFile file, const std::string& title, const QPageSize& sheet)
    : file_(std::move(file)), writer_(&file_) {
  constexpr int kDotsPerInch = 1440;  // a dot is a twip
  writer_.setResolution(kDotsPerInch);
  writer_.setPageSize(sheet);
  writer_.setPageMargins(QMarginsF(0, 0, 0, 0));
  writer_.setTitle(ToQt(title));
  writer_.setCreator("Ostrel Payroll");
}

std::string PdfTarget::Deliver() {
  file_.Keep();
  return file_.Path();
}

}  // namespace ostrel
