#pragma once

// Paper of the tests: what was drawn on which page, and where.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/desktop/print_job.h"
#include "platform/values/failure.h"

namespace ostrel {

struct RecordedText {
  Place Where;
  std::string Text;
  Alignment Align;
  bool Whole;
};

struct RecordedPage {
  std::vector<RecordedText> Texts;
  std::vector<Place> Rules;

  /// A line per height on the page, its texts parted by "|".
  std::string Lines() const {
    std::string lines;
    for (std::size_t i = 0; i < Texts.size(); ++i) {
      if (i > 0) lines += Texts[i].Where.Top == Texts[i - 1].Where.Top ? '|' : '\n';
      lines += Texts[i].Text;
    }
    return lines;
  }
};

struct RecordedDocument {
  std::string Name, Folder;
  std::vector<RecordedPage> Pages = {};
  bool Finished = false;
};

/// The documents that were handed over, and what the printer does next.
struct RecordedPaper {
  std::vector<RecordedDocument> Documents;
  SheetSize Sheet{12240, 15840};  ///< Letter
  bool PrinterInstalled = true;
  std::string FailsOnce;  ///< reason with which the printer refuses the next document
};

class RecordedPrintJob : public PrintJob {
 public:
  RecordedPrintJob(RecordedPaper& paper, const PrintJobRequest& request)
      : paper_(paper), document_{request.Name, request.Folder} {}

  SheetSize PageSize() const override { return paper_.Sheet; }
  void NewPage() override { document_.Pages.emplace_back(); }
  void DrawText(const PrintedText& text) override {
    document_.Pages.back().Texts.push_back(
        {text.Where, std::string(text.Text), text.Align, text.Whole});
  }
  void DrawRule(const Place& where) override { document_.Pages.back().Rules.push_back(where); }
  void FillBox(const Place& /*where*/) override {}
  void Finish() override { document_.Finished = true; }
  std::string EndDoc() override {
    EXPECT_TRUE(document_.Finished) << "a document was handed over before it was whole";
    if (!paper_.FailsOnce.empty()) {
      throw Failure(failure_number::kPrinter, std::exchange(paper_.FailsOnce, {}));
    }
    paper_.Documents.push_back(document_);
    return paper_.PrinterInstalled ? "" : document_.Folder + "/" + document_.Name + ".pdf";
  }

 private:
  RecordedPaper& paper_;
  RecordedDocument document_;
};

}  // namespace ostrel
