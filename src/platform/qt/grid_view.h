#pragma once

// The grid on the screen: scrolling, the current cell, selecting rows by their boxes, and the
// floating editor. Current row, current column, edited text and selection are the grid's own.

#include <QAbstractScrollArea>
#include <QTimer>

#include "platform/forms/grid.h"
#include "platform/qt/control_view.h"
#include "platform/qt/fitted_text.h"
#include "platform/qt/grid_cell_editor.h"
#include "platform/qt/grid_geometry.h"
#include "platform/qt/grid_painter.h"

namespace ostrel {

class GridView : public QAbstractScrollArea, public ControlView {
 public:
  GridView(Grid& grid, const Surface& surface, QWidget* parent);
  ~GridView() override;

  QWidget& Widget() override { return *this; }
  void Follow() override;
  QWidget& FocusTarget() override;
  void Afterwards() override;

  GridGeometry Geometry() const;
  int FirstRow() const;  ///< the row in the topmost line

 protected:
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  int RowCount() const;
  std::ptrdiff_t CurrentRow() const;
  void Paint(const QRect& dirty);
  void PaintGuarded(const QRect& dirty);
  void ReportOnce(const OddCell& odd);
  void FollowRows();
  void FollowEditor();
  void BringIntoView(std::ptrdiff_t row);

  void Press(QPoint at, bool twice);
  void HandleKey(const QKeyEvent& event);
  void Type(int character);
  bool Navigate(const QKeyEvent& event);
  void MoveBy(int rows, int columns);
  void GoTo(std::ptrdiff_t row, int columnIndex);
  void OpenEditor(const std::string& text);

  Grid& grid_;
  Surface surface_;
  GridCellEditor* editor_;
  LaidOutTexts texts_;
  QTimer storeIsBack_;            // while the store cannot be read
  bool reported_ = false;         // what is wrong with a row; once a run is enough for support
  std::ptrdiff_t shownRow_ = -1;  // the current row as last drawn
};

}  // namespace ostrel
