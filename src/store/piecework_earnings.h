#pragma once

// What each employee's piecework of a day earns an hour, for the minimum wage watch. The watch looks
// for lines with event type "W" and an hourly gross; no such line is ever stored. This room derives one
// for each employee from the day's piecework, in memory alone.

#include <cstdint>
#include <map>
#include <string>

namespace ostrel {

class PieceworkEarnings {
 public:
  /// One derived line per employee whose piecework of the day has hours: its hourly gross is the sum
  /// of GROSS over the sum of HOURS of the piecework lines that have HOURS, as "#0.00". The day counts
  /// whole, whatever the view is filtered to.
  ///   where   where text of the day, " where INT(ETIME) = #06/14/04#"
  ///   throws  what OpenRecordset throws
  void Derive(const std::string& where);

  /// The employees with a line of type "W", derived or stored, that earns less than a wage, in
  /// ascending order as "in (101,102)"; the empty text for nobody, or where the wage is no number.
  ///   where      of the stored ones
  ///   wage       as text, "6.75"
  ///   ListCount  out: how many
  std::string EmployeesBelow(const std::string& where, const std::string& wage,
                             std::int32_t& ListCount) const;

 private:
  std::map<float, double> hourly_;  // hourly gross by employee
};

}  // namespace ostrel
