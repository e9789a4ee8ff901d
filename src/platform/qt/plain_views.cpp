#include "platform/qt/plain_views.h"

#include <QPainter>

#include "platform/qt/fitted_text.h"
#include "platform/qt/pixel_lines.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

LabelView::LabelView(Label& label, const Surface& surface, QWidget* parent)
    : QWidget(parent), label_(label) {
  QFont plain = FormFont(surface.Scale.Factor());
  plain.setBold(label.Bold);
  setFont(plain);
}

void LabelView::Follow() {
  setAccessibleDescription(ToQt(label_.Caption));
  update();
}

void LabelView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  DrawFitted(painter, rect(), static_cast<int>(AlignmentFlags(label_.Align).toInt()),
             ToQt(label_.Caption));
}

FrameView::FrameView(Frame& frame, const Surface& /*surface*/, QWidget* parent)
    : QWidget(parent), frame_(frame) {}

/// The caption stands in the upper line, which leaves the frame's inside to the controls.
void FrameView::paintEvent(QPaintEvent* /*event*/) {
  if (!frame_.Border) return;
  QPainter painter(this);
  const int line = painter.fontMetrics().height();
  const int inset = line / 2;
  DrawFrame(painter, rect().adjusted(0, line / 2, 0, 0), palette().color(QPalette::Mid));

  const QString caption = ToQt(frame_.Caption);
  if (caption.isEmpty()) return;
  const int wide = std::min(painter.fontMetrics().horizontalAdvance(caption), width() - 2 * inset);
  const QRect place(inset, 0, wide, line);
  painter.fillRect(place.adjusted(-2, 0, 2, 0), palette().color(QPalette::Window));
  painter.setPen(palette().color(QPalette::WindowText));
  DrawFitted(painter, place, Qt::AlignLeft | Qt::AlignVCenter, caption);
}

ShapeView::ShapeView(Shape& shape, const Surface& /*surface*/, QWidget* parent)
    : QWidget(parent), shape_(shape) {
  lower();  // behind every control, whatever the order of the design
}

void ShapeView::paintEvent(QPaintEvent* /*event*/) {
  const Color& fill = shape_.FillColor.Get();
  QPainter(this).fillRect(rect(), QColor(fill.Red, fill.Green, fill.Blue));
}

}  // namespace ostrel
