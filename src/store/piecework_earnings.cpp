#include "store/piecework_earnings.h"

#include <set>
#include <vector>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "store/number_list.h"

namespace ostrel {

namespace {

/// What the piecework of one employee comes to.
struct Earnings {
  double Gross = 0, Hours = 0;
};

std::map<float, Earnings> EarningsOf(const std::string& where) {
  std::map<float, Earnings> employees;
  const Look look(PrinDb);
  Recordset lines = PrinDb.OpenRecordset(
      "Select * from [OstrelPr]" + where + " and EVENT_TYPE = 'P' order by ETIME",
      RecordsetType::Dynaset);
  for (; !lines.Eof(); lines.MoveNext()) {
    const Value number = lines["EMPL_NUMB"], hours = lines["HOURS"];
    if (number.IsNull() || hours.IsNull()) continue;
    Earnings& employee = employees[static_cast<float>(number.NumberOrZero())];
    employee.Hours += hours.NumberOrZero();
    employee.Gross += lines["GROSS"].Get().NumberOrZero();
  }
  return employees;
}

}  // namespace

void PieceworkEarnings::Derive(const std::string& where) {
  hourly_.clear();
  for (const auto& [number, employee] : EarningsOf(where)) {
    if (employee.Hours == 0) continue;
    hourly_[number] = WholeNumberText(Format(Divide(employee.Gross, employee.Hours), "#0.00"));
  }
}

std::string PieceworkEarnings::EmployeesBelow(const std::string& where, const std::string& wage,
                                              std::int32_t& ListCount) const {
  constexpr SilentTail statement{PrinModule, "DomainList"};
  std::set<float> below;
  ListCount = 0;
  statement(12130, [&] {
    const double least = WholeNumberText(wage);
    Recordset stored = PrinDb.OpenRecordset("SELECT Distinct EMPL_NUMB FROM [OstrelPr]" + where +
                                            " and EVENT_TYPE = 'W' and HOUR_GROSS<" + wage);
    for (; !stored.Eof(); stored.MoveNext()) {
      const Value number = stored[0];
      if (!number.IsNull()) below.insert(static_cast<float>(number.NumberOrZero()));
    }
    for (const auto& [number, hourly] : hourly_) {
      if (hourly < least) below.insert(number);
    }
  });
  std::vector<std::string> numbers;
  numbers.reserve(below.size());
  for (const float number : below) numbers.push_back(GeneralText(number));
  ListCount = static_cast<std::int32_t>(numbers.size());
  return NumberList(numbers);
}

}  // namespace ostrel
