#pragma once

// The data control: four buttons that walk through the rows of its recordset.

#include "platform/forms/data_control.h"
#include "platform/qt/control_view.h"

namespace ostrel {

class DataControlView : public QWidget, public ControlView {
 public:
  DataControlView(DataControl& control, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override {}

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  DataControl& control_;
};

}  // namespace ostrel
