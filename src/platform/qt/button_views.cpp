#include "platform/qt/button_views.h"

#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "platform/qt/fitted_text.h"
#include "platform/qt/key_codes.h"
#include "platform/qt/key_hooks.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

namespace {

/// Common to the three kinds: the focus is the form's, the access key is the input filter's.
void SetUp(QAbstractButton& widget, Control& control, const Surface& surface) {
  widget.setFocusPolicy(Qt::NoFocus);
  surface.Input.Watch(widget, control);
  QObject::connect(&widget, &QAbstractButton::clicked, &widget,
                   [&control, surface] { surface.Edge.Run([&] { control.Press(); }); });
}

void FollowCaption(QAbstractButton& widget, const std::string& caption) {
  const QString wanted = ToQt(caption);
  if (widget.text() == wanted) return;
  widget.setText(wanted);
  widget.setShortcut({});
}

/// Draws the mark in the font's size and the caption beside it, squeezed rather than cut.
void PaintMarked(QAbstractButton& widget, QStylePainter& painter, QStyleOptionButton& option,
                 QStyle::PrimitiveElement mark) {
  const int side = painter.fontMetrics().ascent() + 2;
  const int gap = side / 3;
  const QRect all = widget.rect();
  option.rect = QRect(0, (all.height() - side) / 2, side, side);
  painter.drawPrimitive(mark, option);

  const QRect place = all.adjusted(side + gap, 0, 0, 0);
  painter.setPen(widget.palette().color(QPalette::WindowText));
  DrawFitted(painter, place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic,
             widget.text());
  if (!widget.hasFocus()) return;
  QStyleOptionFocusRect focus;
  focus.initFrom(&widget);
  focus.rect = place;
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

}  // namespace

ButtonView::ButtonView(Button& button, const Surface& surface, QWidget* parent)
    : QPushButton(parent), button_(button), surface_(surface) {
  SetUp(*this, button, surface);
}

void ButtonView::Follow() { FollowCaption(*this, button_.Caption); }

void ButtonView::keyPressEvent(QKeyEvent* event) {
  surface_.Edge.Run([&] { HandleKey(*event); });
  event->accept();
}

void ButtonView::HandleKey(QKeyEvent& event) {
  int character = CharacterOf(event);
  if (!RaiseKeys(surface_.Shown, button_, KeyCodeOf(event), ShiftOf(event), character)) return;
  // The toolkit presses a button by the blank alone; the foreman's row goes on with Enter.
  if (character == key::kEnter) {
    button_.Press();
  } else {
    QPushButton::keyPressEvent(&event);
  }
}

OptionButtonView::OptionButtonView(OptionButton& option, const Surface& surface, QWidget* parent)
    : QRadioButton(parent), option_(option), surface_(surface) {
  setAutoExclusive(false);  // the form clears the others
  SetUp(*this, option, surface);
}

void OptionButtonView::Follow() {
  FollowCaption(*this, option_.Caption);
  setChecked(option_.Value);
}

void OptionButtonView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
      StepThroughGroup(-1);
      break;
    case Qt::Key_Right:
    case Qt::Key_Down:
      StepThroughGroup(1);
      break;
    default:
      QRadioButton::keyPressEvent(event);
  }
  event->accept();
}

/// The arrow keys set the neighbour in the frame, round the ends.
void OptionButtonView::StepThroughGroup(int step) {
  std::vector<Control*> group;
  for (Control* control : surface_.Shown.Controls()) {
    const bool same = control->Container == option_.Container && control->CanTakeFocus();
    if (same && dynamic_cast<OptionButton*>(control) != nullptr) group.push_back(control);
  }
  const auto own = std::find(group.begin(), group.end(), &option_);
  if (own == group.end()) return;
  const auto count = static_cast<std::ptrdiff_t>(group.size());
  const std::ptrdiff_t place = (own - group.begin() + step + count) % count;
  surface_.Edge.Run([&] { group[static_cast<std::size_t>(place)]->Press(); });
}

void OptionButtonView::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  PaintMarked(*this, painter, option, QStyle::PE_IndicatorRadioButton);
}

CheckBoxView::CheckBoxView(CheckBox& check, const Surface& surface, QWidget* parent)
    : QCheckBox(parent), check_(check) {
  SetUp(*this, check, surface);
}

void CheckBoxView::Follow() {
  FollowCaption(*this, check_.Caption);
  setChecked(check_.Value != 0);
}

void CheckBoxView::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  PaintMarked(*this, painter, option, QStyle::PE_IndicatorCheckBox);
}

}  // namespace ostrel
