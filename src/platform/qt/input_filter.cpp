#include "platform/qt/input_filter.h"

#include <QWidget>

#include "platform/qt/access_keys.h"
#include "platform/qt/key_codes.h"

namespace ostrel {

namespace {

Control* AccessKeyOwner(const Form& form, const QKeyEvent& event) {
  const bool letter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
  if (event.modifiers() != Qt::AltModifier || !letter) return nullptr;
  return AccessKeyOwner(form, static_cast<char>(event.key()));
}

/// Ctrl+Tab and Alt+Tab are the window system's.
bool IsTab(const QKeyEvent& event) {
  return (event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab) && !IsCommandKey(event);
}

}  // namespace

void InputFilter::Watch(QWidget& widget, Control& control) {
  watched_.insert(&widget, &control);
  widget.installEventFilter(this);
}

bool InputFilter::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
      // Comes before the key itself, to ask whether a widget wants the key for itself.
    case QEvent::ShortcutOverride:
      return BeforeShortcuts(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyPress:
      return BeforeKey(*static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
      return BeforeClick(*watched_.value(watched));
    default:
      return false;
  }
}

/// Accepting the event keeps the key from the shortcuts; a text box would do so for its own keys.
bool InputFilter::BeforeShortcuts(QKeyEvent& event) const {
  if (!IsCommandKey(event)) return false;
  event.setAccepted(AccessKeyOwner(form_, event) != nullptr);
  return true;
}

bool InputFilter::BeforeKey(const QKeyEvent& event) {
  if (IsTab(event)) {
    const bool back =
        event.key() == Qt::Key_Backtab || event.modifiers().testFlag(Qt::ShiftModifier);
    edge_.Run([&] { form_.FocusNext(back ? Direction::Back : Direction::Forward); });
    return true;
  }
  Control* owner = AccessKeyOwner(form_, event);
  if (owner == nullptr) return false;
  edge_.Run([&] { owner->Press(); });
  return true;
}

/// The first click into a text box only brings the focus, so that the caret stays where GotFocus has
/// put it; later clicks move it.
bool InputFilter::BeforeClick(Control& control) {
  if (form_.ActiveControl() == &control || !control.CanTakeFocus()) return false;
  edge_.Run([&] { form_.SetFocus(control); });
  return dynamic_cast<TextBox*>(&control) != nullptr;
}

}  // namespace ostrel
