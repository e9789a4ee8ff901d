#pragma once

// One control drawn. The control holds everything; its view only shows it and hands the operator's
// keys and clicks back. What all controls have in common (place, visible, enabled) is FormView's.

#include <QWidget>

#include "platform/forms/form.h"
#include "platform/qt/event_edge.h"
#include "platform/qt/input_filter.h"
#include "platform/qt/scaling.h"

namespace ostrel {

/// What every view of one form shares.
struct Surface {
  Form& Shown;
  EventEdge& Edge;
  InputFilter& Input;
  Scaling Scale;
};

class ControlView {
 public:
  virtual ~ControlView() = default;
  ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  virtual QWidget& Widget() = 0;
  /// Shows what the control holds now.
  virtual void Follow() = 0;
  /// Where the keys go while the control has the focus.
  virtual QWidget& FocusTarget() { return Widget(); }
  /// Behind each event: for what changes without the control's telling.
  virtual void Afterwards() {}
};

}  // namespace ostrel
