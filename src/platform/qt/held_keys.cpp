#include "platform/qt/held_keys.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace ostrel {

namespace {
constexpr quint64 kSameMomentMs = 1;  // no hand is as fast
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
  const bool press = event->type() == QEvent::KeyPress;
  if (!watched->isWindowType() || (!press && event->type() != QEvent::KeyRelease)) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (!press) {
    released_ = key.nativeScanCode();
    when_ = key.timestamp();
    return false;
  }
  const bool same = when_ != 0 && key.nativeScanCode() == released_;
  if (key.isAutoRepeat() || !same || key.timestamp() - when_ > kSameMomentMs) return false;
  QKeyEvent repeated(QEvent::KeyPress, key.key(), key.modifiers(), key.nativeScanCode(),
                     key.nativeVirtualKey(), key.nativeModifiers(), key.text(), true,
                     static_cast<quint16>(key.count()));
  repeated.setTimestamp(key.timestamp());
  QCoreApplication::sendEvent(watched, &repeated);
  event->setAccepted(repeated.isAccepted());
  return true;
}

}  // namespace ostrel
