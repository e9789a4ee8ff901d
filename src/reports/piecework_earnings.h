#pragma once

// What each employee's piecework earns an hour, for the minimum wage watch. The watch looks for lines
// with event type "W" and an hourly gross; no such line is ever stored. This room derives one for
// each employee from the day's piecework and lets queries see them for as long as it lives.

#include <string>

namespace ostrel {

class PieceworkEarnings {
 public:
  PieceworkEarnings() = default;
  ~PieceworkEarnings();
  PieceworkEarnings(const PieceworkEarnings&) = delete;
  PieceworkEarnings& operator=(const PieceworkEarnings&) = delete;

  /// One derived line per employee whose piecework of the day has hours: HOUR_GROSS is the sum of
  /// GROSS over the sum of HOURS of the piecework lines that have HOURS, as "#0.00". The day counts
  /// whole, whatever the view is filtered to.
  ///   day  a date text, as the date box holds it
  void Derive(const std::string& day);
};

}  // namespace ostrel
