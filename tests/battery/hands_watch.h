#pragma once

// What must hold after each step of random hands, worked out from the raw lines of the file and from
// what stands on the form, with nothing of the program's own arithmetic.

#include <optional>
#include <string>
#include <vector>

#include "battery/hands_acts.h"
#include "battery/hands_operator.h"
#include "platform/database/row_types.h"
#include "support/outside_store.h"

namespace ostrel {

class Watch {
 public:
  explicit Watch(Operator& hands);

  /// Behind every start of the program.
  void Started();
  void BeforeStep();
  /// returns  what does not hold: "a word or two: the particulars", or ""
  std::string AfterStep(const Step& step, bool running);

 private:
  using Check = std::string (Watch::*)();

  // The form as it stood before the step, as far as commands leave it alone.
  struct View {
    std::vector<Bookmark> Rows, Selected;
    Bookmark Current = 0;
    int Column = -1;
    bool operator==(const View&) const = default;
  };
  static View ViewNow();
  /// Which lines the view is to show; 0 for all.
  struct Filter {
    int Day = 0;
    double Employee = 0;
    bool Holds(const RawLine& line) const;
  };
  Filter FilterNow() const;
  std::vector<Bookmark> Selection(const RawLines& lines) const;

  std::string NothingIsHeldBack();
  std::string OnlyNamedLinesChange();
  std::string CheckNewLine(const RawLine& line);
  std::string CheckCell(std::int64_t row, int field);
  std::string EditsAreSettled();
  std::string RowsAreThoseOfTheView();
  std::string TotalsAreSums();
  std::string ViewStays();
  std::string NobodyReports();
  void CheckImportFile(const std::string& message);

  Operator& hands_;
  std::unique_ptr<OutsideStore> store_;
  RawLines before_, lines_, seen_;
  std::optional<RawLines> atTotals_;
  View viewBefore_;
  Claim late_;
  bool rowsKnown_ = false, reloaded_ = false, meddled_ = false, dateHalfTyped_ = false;
  Filter filter_, totalled_;  // of the rows on show, and of the sums below them
  bool hasTotals_ = true;     // a filter by what is no number finds nothing
  bool byEmployee_ = false;
  std::vector<Bookmark> rows_;  // on show since the view was opened anew
  Step step_;
  std::int64_t editRow_ = 0;
  int editField_ = -1;
  std::string editText_, importFault_;
};

}  // namespace ostrel
