#include "platform/qt/event_edge.h"

#include <QCoreApplication>
#include <QMetaObject>

#include "platform/values/failure.h"

namespace ostrel {

void EventEdge::RunGuarded(const std::function<void()>& action) {
  if (ended_ || !action) return;
  try {
    Raise ? Raise(action) : action();
  } catch (const ProgramEnded&) {
    ended_ = true;
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
  if (depth_ == 1) {
    RunPosted();
    RunGuarded(Afterwards);
    RunPosted();
  }
  --depth_;
}

void EventEdge::Post(std::function<void()> action) {
  posted_.push_back(std::move(action));
  if (depth_ > 0) return;
  QMetaObject::invokeMethod(
      &context_, [this] { Run({}); }, Qt::QueuedConnection);
}

}  // namespace ostrel
