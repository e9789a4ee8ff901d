#pragma once

// Draws the grid: heading, rows and footer. Rows are read from the recordset as they are drawn, so
// that 250,000 of them cost no more than the few on show.

#include <QPainter>
#include <QPalette>
#include <optional>
#include <vector>

#include "platform/forms/grid.h"
#include "platform/qt/fitted_text.h"
#include "platform/qt/grid_geometry.h"

namespace ostrel {

/// A cell whose value has no form that its column could show.
struct OddCell {
  std::size_t Row = 0;
  int Column = 0;
};

class GridPainter {
 public:
  GridPainter(QPainter& painter, Grid& grid, const GridGeometry& geometry, const QPalette& palette,
              LaidOutTexts& texts);

  void PaintHeading();
  void PaintFooter();
  /// The lines that `dirty` touches; `firstRow` stands in the first line.
  void PaintRows(std::size_t firstRow, const QRect& dirty, bool hasFocus);
  /// The first odd cell that has been painted.
  const std::optional<OddCell>& Odd() const { return odd_; }
  /// Whether a row was painted as it had been, since the store could not be read just now.
  bool Stale() const { return stale_; }

 private:
  struct RowLook {
    bool Current = false, Selected = false;
  };
  void PaintRow(const QRect& line, std::size_t row, RowLook look);
  void PaintRecordBox(const QRect& line, RowLook look);
  /// returns  whether the value is one that the column can show
  bool PaintCell(const QRect& cell, const Column& column, const Value& value);
  void PaintButtonFace(const QRect& cell, const QColor& face);
  void FrameCurrentCell(const QRect& line, RowLook look);
  bool CurrentCellInSight(std::size_t firstRow) const;
  void FindFields();
  RowLook LookOf(std::size_t row) const;

  QPainter& painter_;
  Grid& grid_;
  const GridGeometry& geometry_;
  const QPalette& palette_;
  LaidOutTexts& texts_;
  std::optional<OddCell> odd_;
  bool stale_ = false;
  int padding_;
  std::vector<int> fields_;  // ordinal in the recordset for each visible column, or -1
};

}  // namespace ostrel
