#pragma once

// Where things lie in the grid, in pixels: the record boxes at the left edge, the visible columns,
// a heading above the rows and a footer below. Columns stand where the design has them, to the
// pixel, since the boxes of the form stand above them; the last one runs on to the right edge.

#include <QRect>
#include <QSize>
#include <vector>

#include "platform/forms/grid.h"
#include "platform/qt/scaling.h"

namespace ostrel {

struct ColumnSpan {
  int Number = -1;  ///< of the column in the grid
  int Left = 0, Right = 0;
};

class GridGeometry {
 public:
  GridGeometry(Grid& grid, const Scaling& scale, QSize size, int textHeight);

  std::vector<ColumnSpan> Columns;  ///< the visible ones from left to right
  int RecordBoxRight = 0;
  int RowHeight = 0;

  QRect Heading() const { return {0, 0, size_.width(), headHeight_}; }
  QRect Footer() const { return {0, size_.height() - RowHeight, size_.width(), RowHeight}; }
  QRect Rows() const {
    return {0, headHeight_, size_.width(), std::max(0, size_.height() - headHeight_ - RowHeight)};
  }

  int WholeRows() const { return Rows().height() / RowHeight; }
  QRect Line(int line) const {
    return {0, headHeight_ + line * RowHeight, size_.width(), RowHeight};
  }
  QRect Cell(const QRect& line, const ColumnSpan& column) const {
    return {column.Left, line.top(), column.Right - column.Left, line.height()};
  }

  /// Line of the rows at a point, which may be one that shows no row; -1 outside.
  int LineAt(QPoint at) const;
  /// Index into Columns, or -1 on the record boxes.
  int ColumnAt(int x) const;
  /// Index into Columns of a column's number, or -1 when it is hidden.
  int IndexOf(int number) const;

 private:
  QSize size_;
  int headHeight_ = 0;
};

}  // namespace ostrel
