#pragma once

// The edge between the toolkit's events and the form's. Every key, click and menu command runs
// inside Run; what the routines post meanwhile runs when it is over and before the next key, so
// that fast typing finds the focus where a posted Tab has put it. ProgramEnded is caught here, since
// no exception may cross the toolkit.

#include <QObject>
#include <deque>
#include <functional>

namespace ostrel {

class EventEdge {
 public:
  /// Runs one event, then, behind the outermost one, what has been posted. Does nothing once the
  /// program has ended.
  void Run(const std::function<void()>& event);

  /// `action` runs when the running event is over, or soon if there is none.
  void Post(std::function<void()> action);

  /// A routine has ended the program; the event loop has been told to leave.
  bool Ended() const { return ended_; }

  // The window ties both.
  /// Runs an action so that a failure that leaves it is reported.
  std::function<void(const std::function<void()>& action)> Raise;
  /// Called behind each outermost event, to follow what the form does not tell of.
  std::function<void()> Afterwards;

 private:
  void RunGuarded(const std::function<void()>& action);
  void RunPosted();

  std::deque<std::function<void()>> posted_;
  QObject context_;  // a queued call dies with the edge
  int depth_ = 0;
  bool ended_ = false;
};

}  // namespace ostrel
