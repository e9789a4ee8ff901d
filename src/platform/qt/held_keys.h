#pragma once

// Keys that are held down. An X server tells of each repetition as a release and a press of the same
// moment, and where the two arrive apart the toolkit takes the press for one of the hand's. Here it
// becomes a repetition again, so that everybody else can go by QKeyEvent::isAutoRepeat alone.

#include <QObject>

namespace ostrel {

/// To be installed as an event filter on the application or on a window.
class HeldKeys : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  quint32 released_ = 0;  // the key that was released last, by its place on the keyboard
  quint64 when_ = 0;      // milliseconds, as events have them; 0 for never
};

}  // namespace ostrel
