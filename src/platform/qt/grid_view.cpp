#include "platform/qt/grid_view.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "platform/qt/grid_painter.h"
#include "platform/qt/key_codes.h"
#include "platform/qt/key_hooks.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

namespace {
constexpr int kBackspace = 8, kBlank = 32;
constexpr int kScrollBarTwips = 240;
constexpr int kLookAgainMs = 1000;
constexpr int kOutOfSight = 100000;  // pixels

/// As wide as the form's scale asks, since the toolkit knows but one width.
class ScaledScrollBar : public QScrollBar {
 public:
  explicit ScaledScrollBar(int width) : QScrollBar(Qt::Vertical), width_(width) {}
  QSize sizeHint() const override { return {width_, QScrollBar::sizeHint().height()}; }

 private:
  int width_;
};
}  // namespace

GridView::GridView(Grid& grid, const Surface& surface, QWidget* parent)
    : QAbstractScrollArea(parent), grid_(grid), surface_(surface) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_InputMethodEnabled);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBar(new ScaledScrollBar(surface.Scale.Pixels(kScrollBarTwips)));
  editor_ = new GridCellEditor(
      grid, surface, [this](int rows) { MoveBy(rows, 0); }, viewport());
  surface.Input.Watch(*this, grid);
  surface.Input.Watch(*viewport(), grid);

  storeIsBack_.setSingleShot(true);
  connect(&storeIsBack_, &QTimer::timeout, viewport(), [this] { viewport()->update(); });

  grid.Redraw = [this] {
    FollowRows();
    viewport()->update();
  };
  grid.RowsReplaced = [this] {
    FollowRows();
    verticalScrollBar()->setValue(0);
    shownRow_ = CurrentRow();
    BringIntoView(shownRow_);
    viewport()->update();
  };
}

GridView::~GridView() {
  grid_.Redraw = nullptr;
  grid_.RowsReplaced = nullptr;
}

GridGeometry GridView::Geometry() const {
  return {grid_, surface_.Scale, viewport()->size(), fontMetrics().height()};
}

int GridView::FirstRow() const { return verticalScrollBar()->value(); }

int GridView::RowCount() const {
  const DataControl* source = grid_.DataSource;
  return source != nullptr && source->Recordset ? static_cast<int>(source->Recordset.RowCount())
                                                : 0;
}

std::ptrdiff_t GridView::CurrentRow() const {
  const DataControl* source = grid_.DataSource;
  return source != nullptr && source->Recordset ? source->Recordset.Position() : -1;
}

void GridView::Follow() {
  const int top = grid_.TopRow;
  if (top != FirstRow()) {
    FollowRows();
    verticalScrollBar()->setValue(top);
  }
  FollowEditor();
  viewport()->update();
}

QWidget& GridView::FocusTarget() {
  return grid_.Editing ? static_cast<QWidget&>(*editor_) : static_cast<QWidget&>(*this);
}

/// Routines move the recordset without telling the grid, and a layout may hide the current column.
void GridView::Afterwards() {
  FollowRows();
  const std::vector<ColumnSpan> columns = Geometry().Columns;
  const bool lost = !columns.empty() && Geometry().IndexOf(grid_.Col) < 0;
  if (lost && surface_.Shown.ActiveControl() == &grid_) grid_.Col = columns.front().Number;
  const std::ptrdiff_t row = CurrentRow();
  if (row == shownRow_) return;
  shownRow_ = row;
  BringIntoView(row);
  viewport()->update();
}

void GridView::FollowRows() {
  const int whole = std::max(1, Geometry().WholeRows());
  verticalScrollBar()->setPageStep(whole);
  verticalScrollBar()->setRange(0, std::max(0, RowCount() - whole));
}

/// Scrolled away, the editor keeps the keyboard.
void GridView::FollowEditor() {
  const GridGeometry geometry = Geometry();
  const int index = geometry.IndexOf(grid_.Col);
  if (!grid_.Editing || index < 0) {
    editor_->hide();
    return;
  }
  const std::ptrdiff_t line = CurrentRow() - FirstRow();
  const bool inSight = line >= 0 && line <= geometry.WholeRows();
  const QRect row = geometry.Line(inSight ? static_cast<int>(line) : kOutOfSight);
  const ColumnSpan& span = geometry.Columns[static_cast<std::size_t>(index)];
  editor_->Follow(geometry.Cell(row, span).adjusted(0, 0, -1, -1));
}

void GridView::BringIntoView(std::ptrdiff_t row) {
  if (row < 0) return;
  const auto wanted = static_cast<int>(row);
  const int last = FirstRow() + std::max(1, Geometry().WholeRows()) - 1;
  if (wanted < FirstRow()) verticalScrollBar()->setValue(wanted);
  if (wanted > last) verticalScrollBar()->setValue(FirstRow() + wanted - last);
}

void GridView::resizeEvent(QResizeEvent* /*event*/) {
  FollowRows();
  FollowEditor();
}

void GridView::scrollContentsBy(int /*dx*/, int /*dy*/) {
  grid_.TopRow.Put(FirstRow());
  FollowEditor();
  viewport()->update();
}

void GridView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void GridView::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

bool GridView::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::Paint:
      PaintGuarded(static_cast<QPaintEvent*>(event)->rect());
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      const auto& click = static_cast<const QMouseEvent&>(*event);
      if (click.button() != Qt::LeftButton) return true;
      const bool twice = event->type() == QEvent::MouseButtonDblClick;
      surface_.Edge.Run([&] { Press(click.position().toPoint(), twice); });
      return true;
    }
    default:
      return QAbstractScrollArea::viewportEvent(event);
  }
}

/// No exception may cross the toolkit. What stops the painting is reported behind it.
void GridView::PaintGuarded(const QRect& dirty) {
  try {
    Paint(dirty);
  } catch (const std::exception&) {
    if (std::exchange(reported_, true)) return;
    surface_.Edge.Post([fault = std::current_exception()] { std::rethrow_exception(fault); });
  }
}

void GridView::Paint(const QRect& dirty) {
  QPainter painter(viewport());
  const GridGeometry geometry = Geometry();
  GridPainter grid(painter, grid_, geometry, palette(), texts_);
  const bool hasFocus = surface_.Shown.ActiveControl() == &grid_;
  grid.PaintRows(static_cast<std::size_t>(FirstRow()), dirty, hasFocus);
  if (geometry.Heading().intersects(dirty)) grid.PaintHeading();
  if (geometry.Footer().intersects(dirty)) grid.PaintFooter();
  if (grid.Stale() && !storeIsBack_.isActive()) storeIsBack_.start(kLookAgainMs);
  if (grid.Odd()) ReportOnce(*grid.Odd());
}

/// A value that the program itself would never have stored is support's business. The report comes
/// behind the painting; its Retry looks again.
void GridView::ReportOnce(const OddCell& odd) {
  if (std::exchange(reported_, true)) return;
  const Bookmark mark = grid_.DataSource->Recordset.BookmarkAt(odd.Row);
  surface_.Edge.Post([this, odd, mark] { grid_.RefuseOdd(odd.Row, mark, odd.Column); });
}

void GridView::Press(QPoint at, bool twice) {
  const GridGeometry geometry = Geometry();
  const int line = geometry.LineAt(at);
  const int row = FirstRow() + line;
  if (line < 0 || row >= RowCount()) return;
  const int index = geometry.ColumnAt(at.x());
  GoTo(row, index >= 0 ? index : geometry.IndexOf(grid_.Col));
  if (index < 0) {
    grid_.ToggleSelected(static_cast<std::size_t>(row));
    viewport()->update();
  } else if (twice) {
    OpenEditor(grid_.CellText(grid_.Col));
  }
}

void GridView::keyPressEvent(QKeyEvent* event) {
  surface_.Edge.Run([&] { HandleKey(*event); });
  event->accept();
}

void GridView::HandleKey(const QKeyEvent& event) {
  // Hooks come first, as in every control: the rate column makes a letter the standard rate before
  // an editor could open on it.
  int character = CharacterOf(event);
  if (!RaiseKeys(surface_.Shown, grid_, KeyCodeOf(event), ShiftOf(event), character)) return;
  if (character != 0) {
    Type(character);
  } else if (!Navigate(event)) {
    if (event.key() == Qt::Key_F2) OpenEditor(grid_.CellText(grid_.Col));
    if (event.key() == Qt::Key_Delete) OpenEditor({});
  }
}

void GridView::Type(int character) {
  if (character == kBackspace) OpenEditor({});
  if (character < kBlank) return;
  const auto code = static_cast<char32_t>(character);
  OpenEditor(FromQt(QString::fromUcs4(&code, 1)));
}

/// The first character of composed text opens the editor, which takes the rest.
void GridView::inputMethodEvent(QInputMethodEvent* event) {
  const QString& made = event->commitString();
  if (made.isEmpty()) return;
  surface_.Edge.Run([&] {
    int character = static_cast<int>(made.toUcs4().constFirst());
    if (RaiseKeys(surface_.Shown, grid_, kInputMethodKey, 0, character)) Type(character);
  });
  QInputMethodEvent rest;
  rest.setCommitString(made.mid(UnitsOf(made, 1)));
  if (grid_.Editing && !rest.commitString().isEmpty()) QCoreApplication::sendEvent(editor_, &rest);
}

bool GridView::Navigate(const QKeyEvent& event) {
  const int page = std::max(1, Geometry().WholeRows() - 1);
  const bool ctrl = event.modifiers().testFlag(Qt::ControlModifier);
  const int lastColumn = static_cast<int>(Geometry().Columns.size()) - 1;
  switch (event.key()) {
    case Qt::Key_Up:
      MoveBy(-1, 0);
      return true;
    case Qt::Key_Down:
      MoveBy(1, 0);
      return true;
    case Qt::Key_Left:
      MoveBy(0, -1);
      return true;
    case Qt::Key_Right:
      MoveBy(0, 1);
      return true;
    case Qt::Key_PageUp:
      MoveBy(-page, 0);
      return true;
    case Qt::Key_PageDown:
      MoveBy(page, 0);
      return true;
    case Qt::Key_Home:
      ctrl ? MoveBy(-RowCount(), 0) : MoveBy(0, -lastColumn);
      return true;
    case Qt::Key_End:
      ctrl ? MoveBy(RowCount(), 0) : MoveBy(0, lastColumn);
      return true;
    default:
      return false;
  }
}

void GridView::MoveBy(int rows, int columns) {
  const std::ptrdiff_t from = CurrentRow() >= 0 ? CurrentRow() : FirstRow();
  const int index = std::max(0, Geometry().IndexOf(grid_.Col));
  GoTo(from + rows, index + columns);
}

/// Both are brought back within the grid.
void GridView::GoTo(std::ptrdiff_t row, int columnIndex) {
  const std::vector<ColumnSpan> columns = Geometry().Columns;
  if (columns.empty() || RowCount() == 0) return;
  const std::ptrdiff_t lastRow = RowCount() - 1;
  const int lastColumn = static_cast<int>(columns.size()) - 1;
  row = std::clamp<std::ptrdiff_t>(row, 0, lastRow);
  const int column = std::clamp(columnIndex, 0, lastColumn);
  grid_.GoTo(static_cast<std::size_t>(row), columns[static_cast<std::size_t>(column)].Number);
  shownRow_ = CurrentRow();
  BringIntoView(shownRow_);
  viewport()->update();
}

void GridView::OpenEditor(const std::string& text) {
  const bool active = surface_.Shown.ActiveControl() == &grid_;
  if (!active || !grid_.CanEdit()) return;
  BringIntoView(CurrentRow());
  grid_.BeginEdit(SingleLine(text));
}

}  // namespace ostrel
