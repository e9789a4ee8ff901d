#include "platform/desktop/grid_print.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "platform/desktop/desktop.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

// Twips.
constexpr int kRowHeight = 270;
constexpr int kBelowHeader = 120;
constexpr int kCellPadding = 30;  // on either side of a cell's text

struct PrintedColumn {
  const Column* Source;
  int FieldOrdinal;
  int Left, Width;
};

int OrdinalOf(const Recordset& rows, const std::string& field) {
  for (int ordinal = 0; ordinal < rows.FieldCount(); ++ordinal) {
    if (SameText(rows[ordinal].Name(), field)) return ordinal;
  }
  throw Failure(failure_number::kItemNotFound,
                "Item not found: the view has no field '" + field + "'.");
}

bool IsNumber(const Value& value) {
  return value.KindOf() == Value::Kind::Long || value.KindOf() == Value::Kind::Single ||
         value.KindOf() == Value::Kind::Double;
}

/// General: numbers to the right, all else to the left.
Alignment Resolved(Alignment align, bool isNumber) {
  if (align != Alignment::General) return align;
  return isNumber ? Alignment::Right : Alignment::Left;
}

/// One document in the making.
class GridOnPaper {
 public:
  GridOnPaper(Grid& grid, PrintJob& job);
  void Draw();

 private:
  void PlaceColumns(Grid& grid);
  int TableWidth() const;
  void StartPage();
  void DrawHeadings();
  void DrawRow(const std::vector<Value>& fields);
  void DrawCell(const PrintedColumn& column, PrintedText text);
  void EndRow();
  void EndPage();

  const PrintSettings& settings_;
  Recordset rows_;
  PrintJob& job_;
  const SheetSize sheet_;
  std::vector<PrintedColumn> columns_;
  int top_ = 0;    // of the next row
  int table_ = 0;  // top of the page's table
  bool firstPage_ = true;
};

GridOnPaper::GridOnPaper(Grid& grid, PrintJob& job)
    : settings_(grid.PrintInfo), job_(job), sheet_(job.PageSize()) {
  if (grid.DataSource != nullptr) rows_ = grid.DataSource->Recordset;
  PlaceColumns(grid);
}

void GridOnPaper::PlaceColumns(Grid& grid) {
  int wanted = 0;
  for (int number = 0; number < grid.ColumnCount(); ++number) {
    const Column& column = grid.Columns(number);
    if (!column.Visible) continue;
    const int ordinal = rows_ ? OrdinalOf(rows_, column.DataField) : 0;
    columns_.push_back({&column, ordinal, wanted, column.Width});
    wanted += column.Width;
  }
  const int room = std::max(sheet_.Width - settings_.LeftMargin - settings_.RightMargin, 0);
  const double share = wanted > room ? static_cast<double>(room) / wanted : 1;
  const auto onPaper = [&](int twips) { return static_cast<int>(twips * share); };
  for (PrintedColumn& column : columns_) {
    const int right = onPaper(column.Left + column.Width);
    column.Left = onPaper(column.Left);
    column.Width = right - column.Left;
    column.Left += settings_.LeftMargin;
  }
}

int GridOnPaper::TableWidth() const {
  if (columns_.empty()) return 0;
  return columns_.back().Left + columns_.back().Width - settings_.LeftMargin;
}

void GridOnPaper::Draw() {
  const std::size_t count = rows_ ? rows_.RowCount() : 0;
  StartPage();
  for (std::size_t position = 0; position < count; ++position) {
    const std::vector<Value> fields = rows_.RowAt(position);
    // A line that another run has deleted meanwhile has no fields.
    if (!fields.empty()) DrawRow(fields);
  }
  EndPage();
  job_.Finish();
}

void GridOnPaper::StartPage() {
  job_.NewPage();
  top_ = settings_.TopMargin;
  const int width = sheet_.Width - settings_.LeftMargin - settings_.RightMargin;
  job_.DrawText(
      {.Where = {settings_.LeftMargin, top_, width, kRowHeight}, .Text = settings_.PageHeader});
  top_ += kRowHeight + kBelowHeader;
  table_ = top_;
  if (firstPage_ || settings_.RepeatColumnHeaders) DrawHeadings();
  firstPage_ = false;
}

void GridOnPaper::DrawHeadings() {
  const Place headings{settings_.LeftMargin, top_, TableWidth(), kRowHeight};
  job_.FillBox(headings);
  job_.DrawRule({headings.Left, headings.Top, headings.Width, 0});
  for (const PrintedColumn& column : columns_) {
    DrawCell(column, {.Text = column.Source->Caption,
                      .Align = Resolved(column.Source->HeadingAlign, false)});
  }
  EndRow();
}

void GridOnPaper::DrawRow(const std::vector<Value>& fields) {
  if (top_ + kRowHeight > sheet_.Height - settings_.BottomMargin) {
    EndPage();
    StartPage();
  }
  for (const PrintedColumn& column : columns_) {
    const Value& value = fields[static_cast<std::size_t>(column.FieldOrdinal)];
    const bool isNumber = IsNumber(value);
    const std::string text = column.Source->Display(value);
    DrawCell(
        column,
        {.Text = text, .Align = Resolved(column.Source->CellAlign, isNumber), .Whole = isNumber});
  }
  EndRow();
}

void GridOnPaper::DrawCell(const PrintedColumn& column, PrintedText text) {
  if (text.Text.empty()) return;
  text.Where = {column.Left + kCellPadding, top_, column.Width - 2 * kCellPadding, kRowHeight};
  job_.DrawText(text);
}

void GridOnPaper::EndRow() {
  top_ += kRowHeight;
  job_.DrawRule({settings_.LeftMargin, top_, TableWidth(), 0});
}

void GridOnPaper::EndPage() {
  // Nothing has been drawn below the header, so there is no table to rule.
  if (top_ == table_) return;
  const int height = top_ - table_;
  for (const PrintedColumn& column : columns_) job_.DrawRule({column.Left, table_, 0, height});
  job_.DrawRule({settings_.LeftMargin + TableWidth(), table_, 0, height});
}

}  // namespace

std::unique_ptr<PrintJob> PrintData(Grid& grid, const PrintJobRequest& request) {
  std::unique_ptr<PrintJob> job = TheDesktop().StartPrintJob(request);
  GridOnPaper(grid, *job).Draw();
  return job;
}

}  // namespace ostrel
