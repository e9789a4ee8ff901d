#include "day/day_pages.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "day/findings.h"
#include "platform/values/numbers.h"

namespace ostrel {

namespace {

const PageColumn kEmployeeColumn{"Empl#", 615, Alignment::Right};
const PageColumn kNameColumn{"Name", 2400};

std::string Counted(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string CountedEmployees(std::size_t count) { return Counted(count, "employee", "employees"); }

std::string TextIfNotZero(double number) { return number == 0 ? "" : GeneralText(number); }

// Wages.

struct Wage {
  const EmployeeDay* Employee;
  EmployeePay Pay;
};

/// Only the office knows what anything of the day comes to.
bool IsWhollyStandard(const EmployeePay& pay) {
  return pay.AtStandard && !pay.GrossAnHour && pay.Gross == 0;
}

std::vector<Wage> WagesOf(const DayView& view) {
  std::vector<Wage> wages;
  for (const EmployeeDay& employee : view.Worked.Employees)
    wages.push_back({&employee, view.PayOf(employee)});
  std::stable_sort(wages.begin(), wages.end(), [](const Wage& a, const Wage& b) {
    const bool aStandard = IsWhollyStandard(a.Pay), bStandard = IsWhollyStandard(b.Pay);
    if (aStandard != bStandard) return bStandard;
    return a.Pay.Missing > b.Pay.Missing;
  });
  return wages;
}

std::string WagesHeading(const std::vector<Wage>& wages, double minWage) {
  std::size_t below = 0, standard = 0;
  double missing = 0;
  for (const Wage& wage : wages) {
    if (wage.Pay.Missing > 0) ++below;
    if (wage.Pay.AtStandard) ++standard;
    missing += wage.Pay.Missing;
  }
  std::string heading = CountedEmployees(wages.size());
  if (minWage > 0) heading += ", " + std::to_string(below) + " below " + MoneyText(minWage);
  if (below > 0) heading += ", " + MoneyText(missing) + " missing";
  if (standard > 0) heading += ", " + std::to_string(standard) + " at the standard rate";
  return heading;
}

// In now.

/// "24 BOX, 10.5 LBS", in order of first appearance; the unit as it was first written.
std::string PiecesSoFar(const DayView& view, const EmployeeDay& employee) {
  std::vector<DayLine> sums;
  std::unordered_map<std::string, std::size_t> bySort;  // places in sums
  for (const std::size_t place : employee.Lines) {
    const DayLine& line = view.Facts.Lines[place];
    if (line.Kind != kPieceKind || line.Quantity == 0) continue;
    const auto [sort, isNew] = bySort.try_emplace(UnitKey(line.Unit), sums.size());
    if (isNew) {
      sums.push_back(line);
    } else {
      sums[sort->second].Quantity += line.Quantity;
    }
  }
  std::string all;
  for (const DayLine& sum : sums) all += (all.empty() ? "" : ", ") + QuantityText(sum);
  return all;
}

}  // namespace

DayPage ToCheckPage(const DayView& view) {
  const std::vector<Finding> findings = FindingsOf(view);
  DayPage page{"To Check",
               "",
               {kEmployeeColumn, kNameColumn, {"Time", 840, Alignment::Right}, {"What", 7200}},
               {}};
  page.Rows.reserve(findings.size());
  std::string name;
  double last = -1;
  std::size_t employees = 0;
  for (const Finding& finding : findings) {
    const DayLine& line = view.Facts.Lines[finding.Line];
    if (employees == 0 || line.EmplNumb != last) {
      ++employees;
      last = line.EmplNumb;
      name = view.NameOf(*view.Worked.Find(last));
    }
    page.Rows.push_back(
        {{NumberText(line.EmplNumb), name, TimeText(line.Minute), finding.What}, line.Row, true});
  }
  page.Heading = findings.empty() ? "Nothing to check"
                                  : std::to_string(findings.size()) + " to check, " +
                                        CountedEmployees(employees);
  return page;
}

DayPage WagesPage(const DayView& view) {
  const std::vector<Wage> wages = WagesOf(view);
  DayPage page{"Wages",
               WagesHeading(wages, view.TheOffice->MinWage),
               {kEmployeeColumn,
                kNameColumn,
                {"Hours", 870, Alignment::Right},
                {"Pieces", 870, Alignment::Right},
                {"Gross", 990, Alignment::Right},
                {"Gross/Hr", 870, Alignment::Right},
                {"Missing", 870, Alignment::Right},
                {"Std Rate Hours", 1300, Alignment::Right}},
               {}};
  page.Rows.reserve(wages.size());
  for (const auto& [employee, pay] : wages) {
    const bool standard = IsWhollyStandard(pay);
    page.Rows.push_back(
        {{NumberText(employee->Number), view.NameOf(*employee), MoneyText(pay.Hours),
          TextIfNotZero(pay.Pieces), standard ? "Std Rate" : MoneyText(pay.Gross),
          pay.GrossAnHour ? MoneyText(*pay.GrossAnHour) : "",
          pay.Missing > 0 ? MoneyText(pay.Missing) : "",
          pay.AtStandard ? MoneyText(pay.StandardHours) : ""},
         view.Facts.Lines[employee->Lines.front()].Row,
         pay.Missing > 0});
  }
  return page;
}

DayPage InNowPage(const DayView& view) {
  DayPage page{"In Now",
               "",
               {kEmployeeColumn,
                kNameColumn,
                {"Since", 840, Alignment::Right},
                {"Ent#", 700, Alignment::Right},
                {"Oper", 700, Alignment::Right},
                {"Eqp#", 700, Alignment::Right},
                {"Pieces so far", 3600}},
               {}};
  for (const EmployeeDay& employee : view.Worked.Employees) {
    const WorkPeriod* open = employee.OpenPeriod();
    if (open == nullptr) continue;
    const DayLine& in = view.Facts.Lines[open->ClockIn];
    page.Rows.push_back({{NumberText(employee.Number), view.NameOf(employee), TimeText(in.Minute),
                          NumberText(in.Enterprise), NumberText(in.Operation),
                          NumberText(in.Equipment), PiecesSoFar(view, employee)},
                         in.Row});
  }
  page.Heading = page.Rows.empty() ? "Nobody is in" : std::to_string(page.Rows.size()) + " in";
  return page;
}

}  // namespace ostrel
