// The grid's view kept over a command.

#include <algorithm>
#include <unordered_set>

#include "platform/forms/grid.h"

namespace ostrel {

namespace {

bool StandsAt(const Recordset& rows, std::size_t position, Bookmark mark) {
  return position < rows.RowCount() && rows.BookmarkAt(position) == mark;
}

/// Where a row that stood at `position` stands now; its neighbour's place when it has gone.
std::size_t Find(const Recordset& rows, std::size_t position, Bookmark mark) {
  if (StandsAt(rows, position, mark)) return position;
  const std::size_t count = rows.RowCount();
  for (std::size_t row = 0; row < count; ++row) {
    if (rows.BookmarkAt(row) == mark) return row;
  }
  return std::min(position, count - 1);
}

/// The marks of rows that are still there, in their order.
std::vector<Bookmark> StillThere(const Recordset& rows, std::vector<Bookmark> marks) {
  const std::unordered_set<Bookmark> wanted(marks.begin(), marks.end());
  std::unordered_set<Bookmark> found;
  for (std::size_t row = 0; row < rows.RowCount() && found.size() < wanted.size(); ++row) {
    if (wanted.contains(rows.BookmarkAt(row))) found.insert(rows.BookmarkAt(row));
  }
  std::erase_if(marks, [&](Bookmark mark) { return !found.contains(mark); });
  return marks;
}

}  // namespace

std::function<void()> Grid::KeepView() {
  if (!HasRow()) return {};
  const Recordset& rows = DataSource->Recordset;
  View view{
      DataSource->RecordSource, rows.Position(), rows.GetBookmark(), Col, TopRow, SelBookmarks};
  return [this, view = std::move(view)] { Show(view); };
}

void Grid::Show(const View& view) {
  Recordset& rows = DataSource->Recordset;
  if (DataSource->RecordSource.Get() != view.Query || !rows || rows.RowCount() == 0) return;
  const std::size_t row = Find(rows, static_cast<std::size_t>(view.Row), view.RowMark);
  if (rows.Position() != static_cast<std::ptrdiff_t>(row)) rows.SetPosition(row);
  Col = view.Column;
  if (SelBookmarks != view.Selected) SelBookmarks = StillThere(rows, view.Selected);
  TopRow = view.Top;
  detail::TellChange(*this);
}

}  // namespace ostrel
