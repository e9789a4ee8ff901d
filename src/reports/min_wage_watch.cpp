#include "reports/min_wage_watch.h"

#include <cstdint>
#include <string>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "hours/employee_hours.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "store/number_list.h"
#include "store/piecework_earnings.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "mnuMinWageWatch_Click"};

struct Watch {
  std::int32_t ActiveCount = 0;
  double TotalQuantity = 0, TotalGross = 0;
  std::string BelowList;
  std::int32_t BelowCount = 0;
};

/// The totals are those of the lines on show, as the footers have them.
double FooterNumber(std::int32_t line, const char* column) {
  double number = 0;
  statement(line, [&] { number = WholeNumberText(TDBGrid1.Columns(column).FooterText); });
  return number;
}

void FindEmployeesBelow(Watch& watch) {
  PieceworkEarnings earnings;
  statement(2710, [&] { earnings.Derive(WhereWorkDay()); });
  watch.BelowList = earnings.EmployeesBelow(WhereWorkDay(), lblMinWage.Caption, watch.BelowCount);
}

std::string MessageOf(const Watch& watch) {
  const Moment now = Now();
  std::string average;
  statement(2740,
            [&] { average = Format(Divide(watch.TotalGross, watch.ActiveCount), " #,###.00"); });
  std::string message = lblClient.Caption.Get() + " " + txtToday.Text.Get() + "   at " +
                        Format(now, DateFormat) + " " + Format(now, TimeFormat) + "\r" +
                        "Active Employees:" + SignedNumberText(watch.ActiveCount) + "\r" +
                        "Total Quantity:" + SignedNumberText(watch.TotalQuantity) + "\r" +
                        "Total Gross:" + Format(watch.TotalGross, " #,###.##") + "\r" +
                        "    Ave Gross/Empl:" + average + "\r\r";
  if (watch.BelowCount == 0) return message + "ALL Employees earning minimum wage.";
  return message + std::to_string(watch.BelowCount) +
         " Employees not earning minimum wage.\r   Employee#s: " + WithoutBrackets(watch.BelowList);
}

}  // namespace

void mnuMinWageWatch_Click() {
  statement(2670, [] { CalcEmplHours(); });
  if (JobStepAborted) return;
  Watch watch;
  EmployeesClockedIn(watch.ActiveCount);
  statement(2680, [] { DoEvents(); });
  if (watch.ActiveCount == 0) {
    statement(2690, [] {
      MsgBox("No employees checked in.\rCan't do Minimum Wage Watch without employees checked in.",
             BoxButtons::Ok, BoxIcon::Information, mnuMinWageWatch.Caption);
    });
    return;
  }
  watch.TotalQuantity = FooterNumber(2700, "QUANTITY");
  watch.TotalGross = FooterNumber(2704, "GROSS");
  FindEmployeesBelow(watch);
  const std::string message = MessageOf(watch);
  statement(2750, [&] {
    MsgBox(message, BoxButtons::Ok,
           watch.BelowCount > 0 ? BoxIcon::Exclamation : BoxIcon::Information,
           mnuMinWageWatch.Caption);
  });
}

}  // namespace ostrel
