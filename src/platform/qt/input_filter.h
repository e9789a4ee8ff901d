#pragma once

// Sees the keys and clicks of every control that can take the focus before the control's widget
// does, and keeps the rules that hold for all of them: focus belongs to the form, Tab is the form's,
// access keys go to the controls on show before the menus, and the menus' shortcuts go before any
// use that a text box has for the same keys. What the hand did once happens once: a key held down and
// the second click of a double click press nothing, and a click counts although a box took its release.

#include <QHash>
#include <QKeyEvent>
#include <QObject>

#include "platform/forms/form.h"
#include "platform/qt/event_edge.h"

namespace ostrel {

class InputFilter : public QObject {
 public:
  InputFilter(Form& form, EventEdge& edge) : form_(form), edge_(edge) {}

  void Watch(QWidget& widget, Control& control);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool BeforeShortcuts(QKeyEvent& event) const;
  bool BeforeKey(const QKeyEvent& event);
  bool BeforeClick(QObject& watched, const QMouseEvent& event);

  Form& form_;
  EventEdge& edge_;
  QHash<QObject*, Control*> watched_;
};

}  // namespace ostrel
