#pragma once

// A page of the window of the day, as data: a heading that counts, columns, rows of texts, and the
// line that each row leads to. Whoever shows pages needs to know nothing else about a day.

#include <string>
#include <vector>

#include "platform/database/recordset.h"
#include "platform/forms/control.h"

namespace ostrel {

struct PageColumn {
  std::string Caption;
  int Width = 0;  ///< twips
  Alignment Align = Alignment::Left;
};

struct PageRow {
  std::vector<std::string> Texts;  ///< one a column
  Bookmark Line = 0;               ///< the line of the store to go to
  bool Stressed = false;           ///< to be shown in amber, with "!" in front where colour is none
};

struct DayPage {
  std::string Title;    ///< "To Check"
  std::string Heading;  ///< "3 to check, 2 employees"
  std::vector<PageColumn> Columns;
  std::vector<PageRow> Rows;
};

/// The page for the clipboard: captions and rows, a line each, texts parted by tabs. Tabs and line
/// ends within a text become blanks.
std::string PageAsText(const DayPage& page);

}  // namespace ostrel
