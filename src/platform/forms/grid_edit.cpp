// The grid's cell editor and current cell, as far as they are no matter of drawing.

#include <algorithm>
#include <cassert>

#include "platform/forms/grid.h"
#include "platform/forms/selection.h"
#include "platform/values/text.h"

namespace ostrel {

bool Grid::HasRow() const {
  return DataSource != nullptr && DataSource->Recordset && DataSource->Recordset.Position() >= 0;
}

std::string Grid::CellText(int number) const {
  if (Editing && number == Col) return EditText;
  if (!HasRow()) return {};
  const Column& column = *columns_.at(static_cast<std::size_t>(number));
  return column.Display(DataSource->Recordset[column.DataField].Get());
}

void Grid::GoTo(std::size_t row, int column) {
  if (Editing) CommitEdit();
  Recordset& rows = DataSource->Recordset;
  if (row < rows.RowCount() && rows.Position() != static_cast<std::ptrdiff_t>(row)) {
    rows.SetPosition(row);
  }
  Col = column;
}

void Grid::ToggleSelected(std::size_t row) {
  const Bookmark bookmark = DataSource->Recordset.BookmarkAt(row);
  const auto found = std::find(SelBookmarks.begin(), SelBookmarks.end(), bookmark);
  if (found != SelBookmarks.end()) {
    SelBookmarks.erase(found);
  } else {
    SelBookmarks.push_back(bookmark);
  }
}

bool Grid::CanEdit() const {
  return HasRow() && Col >= 0 && Col < ColumnCount() &&
         !columns_[static_cast<std::size_t>(Col.Get())]->Locked;
}

void Grid::BeginEdit(std::string text) {
  assert(CanEdit());
  textBefore_ = CellText(Col);
  editRow_ = DataSource->Recordset.GetBookmark();
  committing_ = false;
  Editing = true;
  const int end = static_cast<int>(LengthOf(text));
  Typed(std::move(text), end, 0);
  detail::TellChange(*this);
}

void Grid::Typed(std::string text, int selStart, int selLength) {
  EditText = std::move(text);
  SelStart.Put(selStart);
  SelLength.Put(selLength);
}

void Grid::CommitEdit() {
  if (!Editing || committing_) return;
  committing_ = true;
  if (EditText != textBefore_) WriteCell();
  committing_ = false;
  CancelEdit();
}

void Grid::CancelEdit() {
  if (!Editing) return;
  Editing = false;
  Typed({}, 0, 0);
  detail::TellChange(*this);
}

Value Grid::CellValue(const std::string& text, const Value& old) const {
  const Column& column = *columns_[static_cast<std::size_t>(Col.Get())];
  if (!column.TranslatedWord.empty() && SameText(text, column.TranslatedWord)) {
    return column.TranslatedNumber;
  }
  if (!text.empty()) return text;
  return old.IsText() ? Value(" ") : Value();  // a text of a line is never stored empty
}

void Grid::WriteCell() {
  Recordset& rows = DataSource->Recordset;
  const std::string field = columns_[static_cast<std::size_t>(Col.Get())]->DataField;
  Value old;
  const bool found = Owner->Try([&] {
    if (rows.Position() < 0 || rows.GetBookmark() != editRow_) rows.SetBookmark(editRow_);
    old = rows[field].Get();
  });
  if (!found) return;

  std::int16_t cancel = 0;
  if (BeforeColUpdate) Owner->Raise([&] { BeforeColUpdate(Col, old, cancel); });
  if (cancel != 0 || !Editing) return;

  const Value value = CellValue(EditText, old);
  const bool written = Owner->Try([&] {
    if (rows.Mode() == EditMode::None) rows.Edit();
  }) && Owner->Try([&] { rows[field] = value; }) &&
                       Owner->Try([&] { rows.Update(); });
  if (!written && rows.Mode() != EditMode::None) rows.CancelUpdate();
}

std::string Grid::SelText() const {
  if (!Editing) return Control::SelText();
  return SelectedPart(EditText, {SelStart, SelLength});
}

void Grid::SetSelText(const std::string& text) {
  if (!Editing) return Control::SetSelText(text);
  Selection selection{SelStart, SelLength};
  std::string replaced = ReplaceSelected(EditText, selection, SingleLine(text));
  Typed(std::move(replaced), selection.Start, selection.Length);
  detail::TellChange(*this);
}

}  // namespace ostrel
