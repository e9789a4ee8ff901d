#include "platform/qt/grid_cell_editor.h"

#include <QKeyEvent>

#include "platform/qt/fitted_text.h"

namespace ostrel {

GridCellEditor::GridCellEditor(Grid& grid, const Surface& surface,
                               std::function<void(int rows)> move, QWidget* parent)
    : LineEditor(grid, surface, parent), grid_(grid), move_(std::move(move)) {
  setAccessibleName("Cell");
  surface.Input.Watch(*this, grid);
  hide();
}

void GridCellEditor::Follow(const QRect& cell) {
  setGeometry(cell);
  if (grid_.Col >= 0) setAlignment(AlignmentFlags(grid_.Columns(grid_.Col).CellAlign));
  ShowText(grid_.EditText, {grid_.SelStart, grid_.SelLength});
  show();
}

void GridCellEditor::Report(std::string text, Selection selection) {
  if (grid_.Editing) grid_.Typed(std::move(text), selection.Start, selection.Length);
}

/// A hook may have closed the editor under its own key; such a key has found its use.
bool GridCellEditor::UseKey(const QKeyEvent& event) {
  if (!grid_.Editing) return true;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      move_(0);
      return true;
    case Qt::Key_Up:
      move_(-1);
      return true;
    case Qt::Key_Down:
      move_(1);
      return true;
    case Qt::Key_Escape:
      grid_.CancelEdit();
      return true;
    default:
      return false;
  }
}

}  // namespace ostrel
