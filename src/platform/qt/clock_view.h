#pragma once

// The running clock: the computer's time, to the second, for as long as it is on show.

#include <QTimer>

#include "platform/qt/control_view.h"

namespace ostrel {

class ClockView : public QWidget, public ControlView {
 public:
  ClockView(ClockControl& clock, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override { update(); }

  /// What it shows now, such as "10:42:05 am".
  static QString TimeText();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QTimer tick_;
};

}  // namespace ostrel
