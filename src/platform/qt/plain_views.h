#pragma once

// What is only looked at: labels, frames, coloured rectangles.

#include "platform/qt/control_view.h"

namespace ostrel {

class LabelView : public QWidget, public ControlView {
 public:
  LabelView(Label& label, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Label& label_;
};

class FrameView : public QWidget, public ControlView {
 public:
  FrameView(Frame& frame, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override { update(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Frame& frame_;
};

class ShapeView : public QWidget, public ControlView {
 public:
  ShapeView(Shape& shape, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override { update(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Shape& shape_;
};

}  // namespace ostrel
