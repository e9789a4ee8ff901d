#include "support/recorded_print_job.h"

#include <gtest/gtest.h>

#include <utility>

#include "platform/failure.h"

namespace ostrel {

std::string RecordedPage::Lines() const {
  std::string lines;
  for (std::size_t i = 0; i < Texts.size(); ++i) {
    if (i > 0) lines += Texts[i].Where.Top == Texts[i - 1].Where.Top ? '|' : '\n';
    lines += Texts[i].Text;
  }
  return lines;
}

RecordedPrintJob::RecordedPrintJob(RecordedPaper& paper, const PrintJobRequest& request)
    : paper_(paper), document_{request.Name, request.Folder, {}, false} {}

void RecordedPrintJob::DrawText(const PrintedText& text) {
  document_.Pages.back().Texts.push_back(
      {text.Where, std::string(text.Text), text.Align, text.Whole});
}

std::string RecordedPrintJob::EndDoc() {
  EXPECT_TRUE(document_.Finished) << "a document was handed over before it was whole";
  if (!paper_.FailsOnce.empty()) {
    throw Failure(failure_number::kPrinter, std::exchange(paper_.FailsOnce, {}));
  }
  paper_.Documents.push_back(document_);
  return paper_.PrinterInstalled ? "" : document_.Folder + "/" + document_.Name + ".pdf";
}

}  // namespace ostrel
