#pragma once

// A point in time as the house counts it, below everything that reads, writes or keeps one.

namespace ostrel {

/// A date and time of day: days since 30 December 1899, the fraction being the time of day.
struct Moment {
  double Days = 0;
  friend bool operator==(const Moment&, const Moment&) = default;
};

}  // namespace ostrel
