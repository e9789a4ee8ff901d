#include "platform/qt/event_edge.h"

#include <QCoreApplication>
#include <QMetaObject>

#include "platform/values/failure.h"

namespace ostrel {

void EventEdge::RunGuarded(const std::function<void()>& action) {
  // An ended program runs nothing more, although the toolkit still delivers what it had in its
  // queue.
  if (ended_ || !action) return;
  try {
    Raise ? Raise(action) : action();
  } catch (const ProgramEnded&) {
    ended_ = true;
    // A Tab that was posted before the end would move a focus that nobody sees.
    posted_.clear();
    QCoreApplication::exit(0);
  }
}

void EventEdge::RunPosted() {
  while (!posted_.empty()) {
    const std::function<void()> action = std::move(posted_.front());
    posted_.pop_front();
    RunGuarded(action);
  }
}

void EventEdge::Run(const std::function<void()>& event) {
  ++depth_;
  RunGuarded(event);
  // An event within an event leaves what was posted to the outer one: the order in which the
  // operator pressed is the order in which it runs.
  if (depth_ == 1) {
    // First what the event has posted, then the look round, and what that look has posted in turn.
    RunPosted();
    RunGuarded(Afterwards);
    RunPosted();
  }
  --depth_;
}

void EventEdge::Post(std::function<void()> action) {
  posted_.push_back(std::move(action));
  if (depth_ > 0) return;
  // Nothing runs now that would take it along, so the event loop does, in a turn of its own.
  QMetaObject::invokeMethod(
      &context_, [this] { Run({}); }, Qt::QueuedConnection);
}

}  // namespace ostrel
