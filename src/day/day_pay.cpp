#include "day/day_pay.h"

#include <algorithm>

#include "frame/standard_rate.h"

namespace ostrel {

namespace {

Carried CarriedAs(const DayLine& line, double hours, bool timeClock) {
  if (!timeClock) return line.Quantity == 0 ? Carried::Hours : Carried::Pieces;
  if (line.Kind == kInKind && hours != 0) return Carried::Hours;
  return line.Kind == kPieceKind ? Carried::Pieces : Carried::Nothing;
}

}  // namespace

LinePay PayOf(const DayLine& line, const LineWork& work, bool timeClock) {
  const double hours = work.Hours.value_or(0);
  LinePay pay{CarriedAs(line, hours, timeClock), hours, {}};
  if (pay.As == Carried::Nothing) return {};
  const double amount = pay.As == Carried::Hours ? hours : line.Quantity;
  if (line.Rate != kStdRate) pay.Gross = HundredthsOrZero(amount * line.Rate);
  return pay;
}

EmployeePay PayOf(const EmployeeDay& employee, const DayFacts& facts, const WorkedDay& worked,
                  bool timeClock, double minWage) {
  EmployeePay sum;
  for (const std::size_t place : employee.Lines) {
    const DayLine& line = facts.Lines[place];
    const LinePay pay = PayOf(line, worked.Lines[place], timeClock);
    if (pay.As == Carried::Nothing) continue;
    sum.Hours += pay.Hours;
    if (pay.As == Carried::Pieces) sum.Pieces += line.Quantity;
    if (!pay.Gross) {
      sum.StandardHours += pay.Hours;
      sum.AtStandard = true;
    }
    sum.Gross += pay.Gross.value_or(0);
  }
  for (double* number : {&sum.Pieces, &sum.Hours, &sum.StandardHours, &sum.Gross})
    *number = HundredthsOrZero(*number);
  const double hours = HundredthsOrZero(sum.Hours - sum.StandardHours);
  if (hours == 0) return sum;
  sum.GrossAnHour = Hundredths(sum.Gross / hours);
  sum.Missing = std::max(0.0, HundredthsOrZero(HundredthsOrZero(minWage * hours) - sum.Gross));
  return sum;
}

}  // namespace ostrel
