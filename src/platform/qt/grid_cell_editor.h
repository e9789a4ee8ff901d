#pragma once

// The floating editor over the grid's current cell.

#include <functional>

#include "platform/forms/grid.h"
#include "platform/qt/line_editor.h"

namespace ostrel {

class GridCellEditor : public LineEditor {
 public:
  /// `move` moves the current cell by so many rows once the text has been written.
  GridCellEditor(Grid& grid, const Surface& surface, std::function<void(int rows)> move,
                 QWidget* parent);

  /// Shows the edited text at its cell.
  void Follow(const QRect& cell);

 protected:
  int Holds() const override { return grid_.Holds(); }
  void Report(std::string text, Selection selection) override;
  bool UseKey(const QKeyEvent& event) override;

 private:
  Grid& grid_;
  std::function<void(int)> move_;
};

}  // namespace ostrel
