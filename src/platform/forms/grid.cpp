#include "platform/forms/grid.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <memory>

#include "platform/values/failure.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"

namespace ostrel {

Column::Column(Control& grid, const ColumnDesign& design)
    : Caption(design.Caption),
      DataField(design.DataField),
      Locked(design.Cells == Typing::Locked),
      Fill(design.Fill),
      CellAlign(design.Cell),
      HeadingAlign(design.Heading),
      FooterAlign(design.Footer),
      NumberFormat(grid, design.NumberFormat),
      Width(grid, design.Width),
      Visible(grid, true),
      FooterText(grid) {}

namespace {

std::string PlainNumber(double number) {
  if (std::isfinite(number)) return GeneralText(number);
  if (std::isnan(number)) return "NaN";
  return number < 0 ? "-Inf" : "Inf";
}

}  // namespace

std::string Column::Display(const Value& value, bool* odd) const {
  if (value.IsNull()) return {};
  if (!TranslatedWord.empty() && !value.IsText() && value.NumberOrZero() == TranslatedNumber) {
    return TranslatedWord;
  }
  try {
    return NumberFormat.Get().empty() ? value.ToText() : Format(value, NumberFormat);
  } catch (const Failure&) {
    if (odd != nullptr) *odd = true;
    return value.IsText() ? value.Characters() : PlainNumber(value.NumberOrZero());
  }
}

void Grid::Design(std::string name, std::string text, Place place) {
  KeyControl::Design(std::move(name), std::move(text), place);
  columns_.clear();
  Col.Put(-1);
  Editing = false;
  EditText.clear();
  SelStart.Put(0);
  SelLength.Put(0);
  TopRow.Put(0);
  SelBookmarks.clear();
  PrintInfo = {};
  DataSource = nullptr;
  BeforeColUpdate = nullptr;
  Redraw = nullptr;
  RowsReplaced = nullptr;
  holds_ = kMostTyped;
  committing_ = false;
}

void Grid::DesignColumns(const std::vector<ColumnDesign>& columns) {
  columns_.clear();
  for (const ColumnDesign& design : columns)
    columns_.push_back(std::make_unique<Column>(*this, design));
}

int Grid::ColumnNumber(std::string_view name) const {
  const auto numberWhere = [&](auto matches) {
    const auto found = std::find_if(columns_.begin(), columns_.end(), matches);
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
  };
  int number = numberWhere([&](const auto& column) { return SameText(column->Caption, name); });
  if (number < 0)
    number = numberWhere([&](const auto& column) { return SameText(column->DataField, name); });
  if (number >= 0) return number;
  throw Failure(failure_number::kSubscript,
                "Subscript out of range: the grid has no column '" + std::string(name) + "'.");
}

Column& Grid::Columns(std::string_view name) { return Columns(ColumnNumber(name)); }

Column& Grid::Columns(int number) {
  if (number < 0 || number >= ColumnCount()) {
    throw Failure(failure_number::kSubscript,
                  "Subscript out of range: the grid has no column " + std::to_string(number) + ".");
  }
  return *columns_[static_cast<std::size_t>(number)];
}

int Grid::ColumnLeft(int number) const {
  int left = kRecordBoxWidth;
  for (int i = 0; i < number; ++i) {
    const Column& column = *columns_[static_cast<std::size_t>(i)];
    if (column.Visible) left += column.Width;
  }
  return left;
}

void Grid::RefuseOdd(std::size_t row, Bookmark mark, int column) const {
  const Recordset& rows = DataSource->Recordset;
  if (row >= rows.RowCount() || rows.BookmarkAt(row) != mark) return;
  const std::vector<Value> fields = rows.RowAt(row);
  const Column& odd = *columns_.at(static_cast<std::size_t>(column));
  std::string line, shown;
  bool isOdd = false;
  for (int ordinal = 0; ordinal < static_cast<int>(fields.size()); ++ordinal) {
    const Value& value = fields[static_cast<std::size_t>(ordinal)];
    const std::string name = rows[ordinal].Name();
    if (SameText(name, odd.DataField)) shown = odd.Display(value, &isOdd);
    if (SameText(name, columns_.front()->DataField)) line = columns_.front()->Display(value);
  }
  if (!isOdd) return;
  throw Failure(failure_number::kOverflow,
                "Line " + std::to_string(mark) + " of the store (" + columns_.front()->Caption +
                    " " + line + ") holds in " + odd.DataField +
                    " what no program of ours has written: " + shown + ".");
}

void Grid::Bind(DataControl& source) {
  DataSource = &source;
  source.Reloaded = [this] {
    CancelEdit();
    SelBookmarks.clear();
    if (RowsReplaced) RowsReplaced();
  };
}

void Grid::Refresh() {
  if (Redraw) Redraw();
}

}  // namespace ostrel
