#pragma once

// Lines of a whole number of the screen's pixels, drawn as filled rectangles: on a screen of 125 or
// 150 % the line of a pen falls between two pixels and may vanish, and a line of one unit is one
// pixel here and two there.

#include <QPaintDevice>
#include <QPainter>
#include <QRectF>
#include <algorithm>
#include <cmath>

namespace ostrel {

/// Thickness of a line in the painter's units.
inline double LineWidth(const QPainter& painter) {
  const double ratio = painter.device()->devicePixelRatio();
  return std::max(1.0, std::floor(ratio)) / ratio;
}

inline void DrawRightAndBottom(QPainter& painter, const QRectF& place, const QColor& color) {
  const double width = LineWidth(painter);
  painter.fillRect(QRectF(place.right() - width, place.top(), width, place.height()), color);
  painter.fillRect(QRectF(place.left(), place.bottom() - width, place.width(), width), color);
}

inline void DrawFrame(QPainter& painter, const QRectF& place, const QColor& color) {
  const double width = LineWidth(painter);
  painter.fillRect(QRectF(place.left(), place.top(), width, place.height()), color);
  painter.fillRect(QRectF(place.left(), place.top(), place.width(), width), color);
  DrawRightAndBottom(painter, place, color);
}

}  // namespace ostrel
