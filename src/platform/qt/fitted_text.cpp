#include "platform/qt/fitted_text.h"

#include <algorithm>

namespace ostrel {

namespace {
constexpr double kPixelsAtFactorOne = 11;  // 8.25 points at 96 dots per inch
}

QFont FormFont(double factor) {
  QFont font;
  font.setFamilies({"Microsoft Sans Serif", "Liberation Sans", "Arial", "DejaVu Sans"});
  font.setPixelSize(std::max(6, static_cast<int>(kPixelsAtFactorOne * factor)));
  return font;
}

Qt::Alignment AlignmentFlags(Alignment align) {
  switch (align) {
    case Alignment::Right:
      return Qt::AlignRight | Qt::AlignVCenter;
    case Alignment::Center:
      return Qt::AlignHCenter | Qt::AlignVCenter;
    case Alignment::Left:
    case Alignment::General:
      break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

void DrawFitted(QPainter& painter, const QRect& place, int flags, const QString& text) {
  if (text.isEmpty() || place.width() <= 0) return;
  const int measured = flags & Qt::TextShowMnemonic;
  const int wide = painter.fontMetrics().size(Qt::TextSingleLine | measured, text).width();
  const int all = flags | Qt::TextSingleLine | Qt::TextDontClip;
  if (wide <= place.width()) {
    painter.drawText(place, all, text);
    return;
  }
  painter.save();
  painter.translate(place.left(), 0);
  painter.scale(static_cast<double>(place.width()) / wide, 1);
  painter.drawText(QRect(0, place.top(), wide, place.height()), all, text);
  painter.restore();
}

}  // namespace ostrel
