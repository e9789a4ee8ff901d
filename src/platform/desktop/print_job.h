#pragma once

// A document on its way to paper, drawn page by page and let go of page by page. Lengths are twips,
// 1440 to the inch, from the upper left corner of the sheet.
//
// The order of calls: NewPage, what stands on that page, NewPage ..., Finish, EndDoc. A job that goes
// without EndDoc is given up: nothing comes out and no file stays. So a caller whose drawing failed
// starts again with a new job, and no page is printed twice.

#include <string>
#include <string_view>

#include "platform/forms/control.h"

namespace ostrel {

struct PrintJobRequest {
  std::string Name;    ///< what the queue shows; also the file's name, so no separators in it
  std::string Folder;  ///< where a PDF goes when no printer is installed; made when it is missing
};

struct SheetSize {
  int Width, Height;
};

/// One line of text at half the height of its place. A text too wide for its place is drawn
/// narrower, down to three fifths; what is still too wide ends in an ellipsis.
struct PrintedText {
  Place Where = {};
  std::string_view Text;              ///< UTF-8, needed for the length of the call only
  Alignment Align = Alignment::Left;  ///< General counts as Left
  bool Whole = false;  ///< never cut, however narrow: half a number is a wrong number
};

class PrintJob {
 public:
  PrintJob() = default;
  virtual ~PrintJob() = default;
  PrintJob(const PrintJob&) = delete;
  PrintJob& operator=(const PrintJob&) = delete;

  virtual SheetSize PageSize() const = 0;

  /// Begins a page, the first one too.
  ///   throws  the file's failure, such as 61, when the pages so far could not be kept
  virtual void NewPage() = 0;

  virtual void DrawText(const PrintedText& text) = 0;
  /// A light line: width or height of the place is 0.
  virtual void DrawRule(const Place& where) = 0;
  /// A box in the colour of a heading.
  virtual void FillBox(const Place& where) = 0;

  /// No more pages. What NewPage throws.
  virtual void Finish() = 0;

  /// Hands the document over; it can be tried again when it fails.
  ///   returns  the path of the PDF, or the empty text when it went to a printer
  ///   throws   Failure 482 with the printer's reason
  virtual std::string EndDoc() = 0;
};

}  // namespace ostrel
