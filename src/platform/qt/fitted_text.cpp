#include "platform/qt/fitted_text.h"

#include <algorithm>

namespace ostrel {

namespace {
constexpr double kPixelsAtFactorOne = 11;  // 8.25 points at 96 dots per inch
}

QFont FormFont(double factor) {
  QFont font;
  // In order of likeness to the design; the machine has at least one of them.
  font.setFamilies({"Microsoft Sans Serif", "Liberation Sans", "Arial", "DejaVu Sans"});
  // In pixels, not points: the form is scaled by its own factor, and the screen's dots per inch
  // would count twice. Below 6 nothing can be read.
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

const QStaticText& LaidOutTexts::Of(const QString& text, const QFont& font) {
  // Laying text out is what costs in a repaint, and a screen of lines repeats itself. The bound is
  // some eight screens; beyond it the operator is paging, and old texts are of no use.
  constexpr qsizetype mostTexts = 5000;
  if (font != font_ || texts_.size() > mostTexts) texts_.clear();
  font_ = font;
  auto found = texts_.find(text);
  if (found == texts_.end()) {
    QStaticText laidOut(QString(text).replace('\n', ' '));
    laidOut.setTextFormat(Qt::PlainText);
    laidOut.prepare({}, font);
    found = texts_.insert(text, laidOut);
  }
  return *found;
}

void DrawFitted(QPainter& painter, const QRect& place, Qt::Alignment align,
                const QStaticText& text) {
  if (text.text().isEmpty() || place.width() <= 0) return;
  const double spare = place.width() - text.size().width();
  const double top = place.top() + (place.height() - text.size().height()) / 2;
  if (spare >= 0) {
    const double left = align & Qt::AlignRight ? spare : align & Qt::AlignHCenter ? spare / 2 : 0;
    painter.drawStaticText(QPointF(place.left() + left, top), text);
    return;
  }
  // Squeezed rather than cut: a figure that loses its last digit is another figure.
  painter.save();
  painter.translate(place.left(), top);
  painter.scale(place.width() / text.size().width(), 1);
  painter.drawStaticText(0, 0, text);
  painter.restore();
}

void DrawFitted(QPainter& painter, const QRect& place, int flags, const QString& text) {
  if (text.isEmpty() || place.width() <= 0) return;
  // The mark of an access key takes no room; measured without the flag it would.
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
