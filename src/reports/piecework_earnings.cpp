#include "reports/piecework_earnings.h"

#include <utility>
#include <vector>

#include "frame/app_state.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

/// What the piecework of one employee comes to.
struct Earnings {
  Value EmplNumb;
  double Gross = 0, Hours = 0;
};

/// The day's piecework comes in order of employees, so an employee's lines stand together.
std::vector<Earnings> EarningsOf(const std::string& day) {
  std::vector<Earnings> employees;
  Recordset lines = PrinDb.OpenRecordset("Select * from [OstrelPr]" + WhereDay(day) +
                                             " and EVENT_TYPE = 'P' Order by EMPL_NUMB, ETIME",
                                         RecordsetType::Dynaset);
  for (; !lines.Eof(); lines.MoveNext()) {
    const Value empl = lines["EMPL_NUMB"];
    if (employees.empty() || employees.back().EmplNumb != empl) employees.push_back({empl});
    const Value hours = lines["HOURS"];
    if (hours.IsNull()) continue;
    employees.back().Hours += hours.NumberOrZero();
    employees.back().Gross += lines["GROSS"].Get().NumberOrZero();
  }
  return employees;
}

}  // namespace

PieceworkEarnings::~PieceworkEarnings() {
  if (PrinDb) PrinDb.HideDerivedLines();
}

void PieceworkEarnings::Derive(const std::string& day) {
  std::vector<DerivedLine> derived;
  for (const Earnings& employee : EarningsOf(day)) {
    if (employee.Hours == 0 || employee.EmplNumb.IsNull()) continue;
    const std::string hourly = Format(Divide(employee.Gross, employee.Hours), "#0.00");
    derived.push_back({{"EMPL_NUMB", employee.EmplNumb},
                       {"ETIME", Moment{DateValue(day)}},
                       {"EVENT_TYPE", "W"},
                       {"HOUR_GROSS", hourly}});
  }
  PrinDb.ShowDerivedLines(derived);
}

}  // namespace ostrel
