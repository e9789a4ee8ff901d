#pragma once

// The day at hand for those who ask at every key: read again only when the store has changed or the
// day is another, worked out again only when the minute has passed or a setting is another.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "day/day_view.h"

namespace ostrel {

class DayWatch {
 public:
  struct Readers {
    std::function<DayFacts(const std::string& day)> Lines;
    std::function<Office()> TheOffice;
    std::function<DayClock()> Clock;
  };
  DayWatch();  ///< reads as read_day.h does
  explicit DayWatch(Readers readers) : readers_(std::move(readers)) {}

  /// The day as it stands. Good until the next call.
  ///   day     a date text, as the date box holds it
  ///   change  any number that is another one once lines have been written, by whatever road
  ///   throws  what the readers throw; the next call then reads anew
  const DayView& At(const std::string& day, std::uint64_t change);

  /// The office has sent new tables, or a new client is opened: all is read anew.
  void Forget();

 private:
  Readers readers_;
  std::shared_ptr<const Office> office_;
  bool hasDay_ = false;
  std::string day_;
  std::uint64_t change_ = 0;
  DayView view_;
};

}  // namespace ostrel
