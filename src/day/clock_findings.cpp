#include "day/clock_findings.h"

#include <optional>
#include <unordered_set>

#include "platform/values/calendar.h"

namespace ostrel {

namespace {

class ClockJudge {
 public:
  ClockJudge(const DayView& view, const EmployeeDay& employee) : view_(view), employee_(employee) {}
  std::vector<Finding> Findings();

 private:
  /// The clock-in under judgement.
  struct Running {
    int In = 0;
    std::optional<int> Out;
  };

  void TakeIn(std::size_t place);
  void TakeOut(std::size_t place);
  void JudgeOpenEnd();
  void Find(Oddity kind, std::size_t place, std::string what) {
    found_.push_back({kind, place, std::move(what)});
  }
  int MinuteAt(std::size_t place) const { return view_.Facts.Lines[place].Minute; }

  const DayView& view_;
  const EmployeeDay& employee_;
  std::unordered_set<int> outs_;  // minutes in which the employee has an out
  std::optional<Running> running_;
  std::optional<int> ended_;  // minute at which a clock-in has ended the one before it
  std::vector<Finding> found_;
};

std::vector<Finding> ClockJudge::Findings() {
  for (const std::size_t place : employee_.Lines) {
    if (view_.Facts.Lines[place].Kind == kOutKind) outs_.insert(MinuteAt(place));
  }
  for (const std::size_t place : employee_.Lines) {
    const char kind = view_.Facts.Lines[place].Kind;
    if (kind == kInKind) TakeIn(place);
    if (kind == kOutKind) TakeOut(place);
  }
  JudgeOpenEnd();
  return std::move(found_);
}

void ClockJudge::TakeIn(std::size_t place) {
  const int minute = MinuteAt(place);
  const bool whileIn = running_ && !running_->Out;
  ended_.reset();
  if (whileIn) ended_ = minute;
  if (whileIn && !outs_.contains(minute)) {
    Find(Oddity::InWhileIn, place,
         "in at " + TimeText(minute) + " while in since " + TimeText(running_->In));
  }
  running_ = Running{minute, {}};
}

void ClockJudge::TakeOut(std::size_t place) {
  const int minute = MinuteAt(place);
  if (!running_) return Find(Oddity::OutWithoutIn, place, "out without in at " + TimeText(minute));
  // The out of the job before, entered behind the in of the next one.
  if (!running_->Out && ended_ == minute) return ended_.reset();
  if (running_->Out && *running_->Out != minute) {
    Find(Oddity::SecondOut, place,
         "second out at " + TimeText(minute) + ": the one at " + TimeText(*running_->Out) +
             " no longer counts");
  }
  running_->Out = minute;
}

void ClockJudge::JudgeOpenEnd() {
  const WorkPeriod* open = employee_.OpenPeriod();
  if (open == nullptr) return;
  const bool today = view_.Facts.Day == static_cast<int>(DayOf(view_.Clock.Now));
  if (today && open->UntilNow) return;
  std::string what = "in without out at " + TimeText(MinuteAt(open->ClockIn));
  // The present time of day means nothing on another day, but that is how the hours run.
  if (open->To >= 0) what += ": hours run to " + TimeText(open->To / 60);
  Find(Oddity::InWithoutOut, open->ClockIn, std::move(what));
}

}  // namespace

std::vector<Finding> ClockFindingsOf(const DayView& view, const EmployeeDay& employee) {
  if (!view.Clock.TimeClock) return {};
  return ClockJudge(view, employee).Findings();
}

}  // namespace ostrel
