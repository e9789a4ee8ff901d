#pragma once

// Paper of the tests: what was drawn on which page, and where.

#include <memory>
#include <string>
#include <vector>

#include "platform/print_job.h"

namespace ostrel {

struct RecordedText {
  Place Where;
  std::string Text;
  Alignment Align;
  bool Whole;
};

struct RecordedPage {
  std::vector<RecordedText> Texts;
  std::vector<Place> Rules, Boxes;

  /// A line per height on the page, its texts parted by "|".
  std::string Lines() const;
};

struct RecordedDocument {
  std::string Name, Folder;
  std::vector<RecordedPage> Pages;
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
  RecordedPrintJob(RecordedPaper& paper, const PrintJobRequest& request);

  SheetSize PageSize() const override { return paper_.Sheet; }
  void NewPage() override { document_.Pages.emplace_back(); }
  void DrawText(const PrintedText& text) override;
  void DrawRule(const Place& where) override { document_.Pages.back().Rules.push_back(where); }
  void FillBox(const Place& where) override { document_.Pages.back().Boxes.push_back(where); }
  void Finish() override { document_.Finished = true; }
  std::string EndDoc() override;

 private:
  RecordedPaper& paper_;
  RecordedDocument document_;
};

}  // namespace ostrel
