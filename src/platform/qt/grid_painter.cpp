#include "platform/qt/grid_painter.h"

#include <QFontMetrics>
#include <algorithm>

#include "platform/qt/fitted_text.h"
#include "platform/qt/pixel_lines.h"
#include "platform/qt/qt_text.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

const QColor kLightGrey(192, 192, 192);
constexpr qsizetype kLongestDrawn = 400;  // characters; no cell is wide enough for more
constexpr double kNarrowest = 0.75;       // a cell's text is squeezed to this before it is cut

bool IsNumber(const Value& value) {
  switch (value.KindOf()) {
    case Value::Kind::Long:
    case Value::Kind::Single:
    case Value::Kind::Double:
      return true;
    default:
      return false;
  }
}

}  // namespace

GridPainter::GridPainter(QPainter& painter, Grid& grid, const GridGeometry& geometry,
                         const QPalette& palette, LaidOutTexts& texts)
    : painter_(painter),
      grid_(grid),
      geometry_(geometry),
      palette_(palette),
      texts_(texts),
      padding_(std::max(2, geometry.RowHeight / 6)) {}

void GridPainter::PaintButtonFace(const QRect& cell, const QColor& face) {
  painter_.fillRect(cell, face);
  DrawRightAndBottom(painter_, cell, palette_.color(QPalette::Mid));
}

void GridPainter::PaintHeading() {
  const QRect line = geometry_.Heading();
  const QColor face = palette_.color(QPalette::Button);
  PaintButtonFace(QRect(0, line.top(), geometry_.RecordBoxRight, line.height()), face);
  for (const ColumnSpan& span : geometry_.Columns) {
    const Column& column = grid_.Columns(span.Number);
    const QRect cell = geometry_.Cell(line, span);
    PaintButtonFace(cell, face);
    painter_.setPen(palette_.color(QPalette::ButtonText));
    DrawFitted(painter_, cell.adjusted(padding_, 0, -padding_, 0),
               static_cast<int>(AlignmentFlags(column.HeadingAlign).toInt()), ToQt(column.Caption));
  }
}

void GridPainter::PaintFooter() {
  const QRect line = geometry_.Footer();
  PaintButtonFace(QRect(0, line.top(), geometry_.RecordBoxRight, line.height()),
                  palette_.color(QPalette::Button));
  for (const ColumnSpan& span : geometry_.Columns) {
    const Column& column = grid_.Columns(span.Number);
    const QRect cell = geometry_.Cell(line, span);
    const bool buttonFace = column.Fill == FooterFill::ButtonFace;
    PaintButtonFace(cell, buttonFace ? palette_.color(QPalette::Button) : kLightGrey);
    painter_.setPen(buttonFace ? palette_.color(QPalette::ButtonText) : Qt::black);
    DrawFitted(painter_, cell.adjusted(padding_, 0, -padding_, 0),
               static_cast<int>(AlignmentFlags(column.FooterAlign).toInt()),
               ToQt(column.FooterText));
  }
}

void GridPainter::FindFields() {
  const Recordset& rows = grid_.DataSource->Recordset;
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(rows.FieldCount()));
  for (int i = 0; i < rows.FieldCount(); ++i) names.push_back(rows[i].Name());
  fields_.clear();
  for (const ColumnSpan& span : geometry_.Columns) {
    const std::string& wanted = grid_.Columns(span.Number).DataField;
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
      return SameText(name, wanted);
    });
    fields_.push_back(found == names.end() ? -1 : static_cast<int>(found - names.begin()));
  }
}

GridPainter::RowLook GridPainter::LookOf(std::size_t row) const {
  const Recordset& rows = grid_.DataSource->Recordset;
  const std::vector<Bookmark>& selected = grid_.SelBookmarks;
  return {.Current = rows.Position() == static_cast<std::ptrdiff_t>(row),
          .Selected = !selected.empty() && std::find(selected.begin(), selected.end(),
                                                     rows.BookmarkAt(row)) != selected.end()};
}

void GridPainter::PaintRows(std::size_t firstRow, const QRect& dirty, bool hasFocus) {
  const QRect area = geometry_.Rows();
  painter_.setClipRect(area);
  painter_.fillRect(area.intersected(dirty), palette_.color(QPalette::Base));
  const bool bound = grid_.DataSource != nullptr && grid_.DataSource->Recordset;
  if (hasFocus && !(bound && CurrentCellInSight(firstRow)))
    DrawFrame(painter_, area, palette_.color(QPalette::Highlight));
  if (!bound) return;

  FindFields();
  const Recordset& rows = grid_.DataSource->Recordset;
  const std::size_t count = rows.RowCount();
  for (int number = 0;; ++number) {
    const QRect line = geometry_.Line(number);
    const std::size_t row = firstRow + static_cast<std::size_t>(number);
    if (row >= count || line.top() > area.bottom()) break;
    if (!line.intersects(dirty)) continue;
    const RowLook look = LookOf(row);
    PaintRow(line, row, look);
    if (look.Current && hasFocus) FrameCurrentCell(line, look);
  }
  painter_.setClipping(false);
}

void GridPainter::PaintRow(const QRect& line, std::size_t row, RowLook look) {
  bool asStored = true;
  const std::vector<Value> values = grid_.DataSource->Recordset.RowAt(row, &asStored);
  stale_ = stale_ || !asStored;
  if (look.Selected) painter_.fillRect(line, palette_.color(QPalette::Highlight));
  const QColor ink = palette_.color(look.Selected ? QPalette::HighlightedText : QPalette::Text);
  for (std::size_t i = 0; i < geometry_.Columns.size(); ++i) {
    const ColumnSpan& span = geometry_.Columns[i];
    const QRect cell = geometry_.Cell(line, span);
    DrawRightAndBottom(painter_, cell, palette_.color(QPalette::Midlight));
    const int field = fields_[i];
    if (field < 0 || static_cast<std::size_t>(field) >= values.size()) continue;
    painter_.setPen(ink);
    const Value& value = values[static_cast<std::size_t>(field)];
    if (!PaintCell(cell, grid_.Columns(span.Number), value) && !odd_) odd_ = {row, span.Number};
  }
  PaintRecordBox(line, look);
}

bool GridPainter::PaintCell(const QRect& cell, const Column& column, const Value& value) {
  if (value.IsNull()) return true;
  bool odd = false;
  QString text = ToQt(column.Display(value, &odd)).left(kLongestDrawn);
  const QRect place = cell.adjusted(padding_, 0, -padding_, 0);
  // Squeezed a little before it is cut, since a name is known by its first letters.
  const double room = place.width() / kNarrowest;
  if (texts_.Of(text, painter_.font()).size().width() > room) {
    text = painter_.fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(room));
  }
  const bool numberByKind = column.CellAlign == Alignment::General && IsNumber(value);
  const Alignment align = numberByKind ? Alignment::Right : column.CellAlign;
  DrawFitted(painter_, place, AlignmentFlags(align), texts_.Of(text, painter_.font()));
  return !odd;
}

void GridPainter::PaintRecordBox(const QRect& line, RowLook look) {
  const QRect box(0, line.top(), geometry_.RecordBoxRight, line.height());
  PaintButtonFace(box, palette_.color(look.Selected ? QPalette::Highlight : QPalette::Button));
  if (!look.Current) return;
  const int half = line.height() / 4;
  const QPoint middle = box.center();
  painter_.save();
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(
      palette_.color(look.Selected ? QPalette::HighlightedText : QPalette::ButtonText));
  painter_.drawPolygon(QPolygon{middle + QPoint(-half / 2, -half), middle + QPoint(-half / 2, half),
                                middle + QPoint(half, 0)});
  painter_.restore();
}

bool GridPainter::CurrentCellInSight(std::size_t firstRow) const {
  const std::ptrdiff_t line =
      grid_.DataSource->Recordset.Position() - static_cast<std::ptrdiff_t>(firstRow);
  return line >= 0 && line <= geometry_.WholeRows() && geometry_.IndexOf(grid_.Col) >= 0;
}

/// On a selected row the frame has the colour of its texts, or it would not be seen.
void GridPainter::FrameCurrentCell(const QRect& line, RowLook look) {
  const int index = geometry_.IndexOf(grid_.Col);
  if (index < 0) return;
  const QRect cell = geometry_.Cell(line, geometry_.Columns[static_cast<std::size_t>(index)]);
  const QColor color =
      palette_.color(look.Selected ? QPalette::HighlightedText : QPalette::Highlight);
  DrawFrame(painter_, cell, color);
  DrawFrame(painter_, cell.adjusted(1, 1, -1, -1), color);
}

}  // namespace ostrel
