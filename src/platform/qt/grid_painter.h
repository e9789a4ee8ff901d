#pragma once

// Draws the grid: heading, rows and footer. Rows are read from the recordset as they are drawn, so
// that 250,000 of them cost no more than the few on show; a row that cannot be read stays empty.

#include <QPainter>
#include <QPalette>
#include <vector>

#include "platform/forms/grid.h"
#include "platform/qt/fitted_text.h"
#include "platform/qt/grid_geometry.h"

namespace ostrel {

class GridPainter {
 public:
  GridPainter(QPainter& painter, Grid& grid, const GridGeometry& geometry, const QPalette& palette,
              LaidOutTexts& texts);

  void PaintHeading();
  void PaintFooter();
  /// The lines that `dirty` touches; `firstRow` stands in the first line.
  void PaintRows(std::size_t firstRow, const QRect& dirty, bool hasFocus);

 private:
  struct RowLook {
    bool Current = false, Selected = false;
  };
  void PaintRow(const QRect& line, const std::vector<Value>& values, RowLook look);
  void PaintRecordBox(const QRect& line, RowLook look);
  void PaintCell(const QRect& cell, const Column& column, const Value& value);
  void PaintButtonFace(const QRect& cell, const QColor& face);
  void FrameCurrentCell(const QRect& line);
  void FindFields();
  RowLook LookOf(std::size_t row) const;

  QPainter& painter_;
  Grid& grid_;
  const GridGeometry& geometry_;
  const QPalette& palette_;
  LaidOutTexts& texts_;
  int padding_;
  std::vector<int> fields_;  // ordinal in the recordset for each visible column, or -1
};

}  // namespace ostrel
