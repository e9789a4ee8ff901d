#include "platform/qt/grid_geometry.h"

namespace ostrel {

namespace {
constexpr int kRowTwips = 255;  // a row of the design
}

GridGeometry::GridGeometry(Grid& grid, const Scaling& scale, QSize size, int textHeight)
    : size_(size) {
  RowHeight = std::max(scale.Pixels(kRowTwips), textHeight + 2);
  headHeight_ = RowHeight + 2;
  const int origin = Scaling::LeftInForm(&grid);
  const auto pixelOf = [&](int twips) { return scale.Between(origin, origin + twips); };
  RecordBoxRight = pixelOf(Grid::kRecordBoxWidth);

  int left = Grid::kRecordBoxWidth;
  for (int number = 0; number < grid.ColumnCount(); ++number) {
    const Column& column = grid.Columns(number);
    if (!column.Visible) continue;
    const int right = left + column.Width;
    Columns.push_back({number, pixelOf(left), pixelOf(right)});
    left = right;
  }
  if (!Columns.empty()) Columns.back().Right = std::max(Columns.back().Right, size.width());
}

int GridGeometry::LineAt(QPoint at) const {
  return Rows().contains(at) ? (at.y() - headHeight_) / RowHeight : -1;
}

int GridGeometry::ColumnAt(int x) const {
  for (std::size_t i = 0; i < Columns.size(); ++i) {
    if (x >= Columns[i].Left && x < Columns[i].Right) return static_cast<int>(i);
  }
  return -1;
}

int GridGeometry::IndexOf(int number) const {
  for (std::size_t i = 0; i < Columns.size(); ++i) {
    if (Columns[i].Number == number) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace ostrel
