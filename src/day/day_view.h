#pragma once

// One day ready to be asked: its facts with all that is worked out of them once. What the window of
// the day, the slips and the advice while typing ask is answered from here by lookups, without the
// store.

#include <memory>
#include <string>

#include "day/day_pay.h"
#include "day/usual_quantities.h"

namespace ostrel {

struct DayView {
  DayFacts Facts;
  DayClock Clock;
  std::shared_ptr<const Office> TheOffice;  ///< never null
  WorkedDay Worked;
  UsualQuantities Usual;

  EmployeePay PayOf(const EmployeeDay& employee) const;

  /// The employee's name in the office's list, else on the lines; the empty text where neither has
  /// one.
  std::string NameOf(const EmployeeDay& employee) const;

  /// Whether the office has a list, and the number is not in it.
  bool IsUnknown(double number) const;
};

DayView MakeDayView(DayFacts facts, const DayClock& clock, std::shared_ptr<const Office> office);

}  // namespace ostrel
