#include "platform/qt/clock_view.h"

#include <QPainter>

#include "platform/qt/fitted_text.h"
#include "platform/qt/pixel_lines.h"
#include "platform/values/clock.h"

namespace ostrel {

namespace {
constexpr int kMillisecondsPerTick = 250;  // the second on show is never more than that behind
}

ClockView::ClockView(ClockControl& /*clock*/, const Surface& /*surface*/, QWidget* parent)
    : QWidget(parent) {
  connect(&tick_, &QTimer::timeout, this, [this, shown = QString()]() mutable {
    if (const QString now = TimeText(); now != shown) {
      shown = now;
      update();
    }
  });
}

QString ClockView::TimeText() {
  const int seconds = static_cast<int>(SecondsSinceMidnight());
  const int hour = seconds / 3600;
  return QString::asprintf("%02d:%02d:%02d %s", (hour + 11) % 12 + 1, seconds / 60 % 60,
                           seconds % 60, hour < 12 ? "am" : "pm");
}

void ClockView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  DrawFrame(painter, rect(), palette().color(QPalette::Mid));
  painter.setPen(palette().color(QPalette::Text));
  DrawFitted(painter, rect().adjusted(2, 0, -2, 0), Qt::AlignCenter, TimeText());
}

void ClockView::showEvent(QShowEvent* /*event*/) { tick_.start(kMillisecondsPerTick); }

void ClockView::hideEvent(QHideEvent* /*event*/) { tick_.stop(); }

}  // namespace ostrel
