#include "day/day_watch.h"

#include <utility>

#include "day/read_day.h"

namespace ostrel {

DayWatch::DayWatch() : readers_{ReadDay, ReadOffice, PresentClock} {}

const DayView& DayWatch::At(const std::string& day, std::uint64_t change) {
  if (office_ == nullptr) {
    hasDay_ = false;
    office_ = std::make_shared<const Office>(readers_.TheOffice());
  }
  const DayClock clock = readers_.Clock();
  if (!hasDay_ || day != day_ || change != change_) {
    hasDay_ = false;
    view_ = MakeDayView(readers_.Lines(day), clock, office_);
    day_ = day;
    change_ = change;
    hasDay_ = true;
  } else if (!clock.SameMinute(view_.Clock)) {
    view_.Clock = clock;
    view_.Worked = WorkOutDay(view_.Facts, clock);
  }
  return view_;
}

void DayWatch::Forget() {
  office_ = nullptr;
  hasDay_ = false;
}

}  // namespace ostrel
