#pragma once

// Lines one pixel wide, drawn as filled rectangles: on a screen of 125 or 150 % the line of a pen
// falls between two pixels and may vanish.

#include <QPainter>
#include <QRect>

namespace ostrel {

inline void DrawRightAndBottom(QPainter& painter, const QRect& place, const QColor& color) {
  painter.fillRect(QRect(place.right(), place.top(), 1, place.height()), color);
  painter.fillRect(QRect(place.left(), place.bottom(), place.width(), 1), color);
}

inline void DrawFrame(QPainter& painter, const QRect& place, const QColor& color) {
  painter.fillRect(QRect(place.left(), place.top(), 1, place.height()), color);
  painter.fillRect(QRect(place.left(), place.top(), place.width(), 1), color);
  DrawRightAndBottom(painter, place, color);
}

}  // namespace ostrel
