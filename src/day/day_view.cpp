#include "day/day_view.h"

#include <utility>

namespace ostrel {

EmployeePay DayView::PayOf(const EmployeeDay& employee) const {
  return ostrel::PayOf(employee, Facts, Worked, Clock.TimeClock, TheOffice->MinWage);
}

std::string DayView::NameOf(const EmployeeDay& employee) const {
  const OfficeEmployee* listed = TheOffice->Find(employee.Number);
  if (listed != nullptr && !listed->Name.empty()) return listed->Name;
  for (const std::size_t place : employee.Lines) {
    if (!Facts.Lines[place].Name.empty()) return Facts.Lines[place].Name;
  }
  return {};
}

bool DayView::IsUnknown(double number) const {
  return !TheOffice->Employees.empty() && TheOffice->Find(number) == nullptr;
}

DayView MakeDayView(DayFacts facts, const DayClock& clock, std::shared_ptr<const Office> office) {
  DayView view{std::move(facts), clock, std::move(office), {}, {}};
  view.Worked = WorkOutDay(view.Facts, view.Clock);
  view.Usual = UsualQuantities(view.Facts);
  return view;
}

}  // namespace ostrel
