#include "work_day/work_day.h"

#include "frame/app_state.h"
#include "platform/desktop/desktop.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"

namespace ostrel {

// Asked of the box each time. A variable beside it would be a second truth: the foreman may have
// typed a new day and not left the box.
bool HasWorkDay() { return IsDate(txtToday.Text); }

std::string WorkDay() { return Format(Moment{DateValue(txtToday.Text)}, DateFormat); }

std::string OnWorkDay(const std::string& time) { return WorkDay() + " " + time; }

std::string WhereDay(const std::string& day) { return " where INT(ETIME) = #" + day + "#"; }

std::string LatestDay() { return Format(DomainFunc("Prin App", "ETIME", "", "Max"), DateFormat); }

// The text goes into the query as it stands: whoever comes here has asked whether it is a day.
std::string WhereWorkDay() { return WhereDay(txtToday.Text); }

std::string EmployeesClockedIn(std::int32_t& ListCount) {
  // The opposite of the list, which no command of a day needs.
  std::string NotList;
  return DomainList("Prin App", "EMPL_NUMB", WhereWorkDay() + " and EVENT_TYPE = 'I'", NotList,
                    ListCount);
}

void SayNoDay(const FailureTail& statement, std::int32_t line) {
  Beep();
  statement(line, [] {
    MsgBox("The Date='" + txtToday.Text.Get() +
               "'!\rSpecify the one day desired then rerun this job step.",
           BoxButtons::Ok, BoxIcon::Exclamation);
  });
}

void SayNobodyClockedIn(const FailureTail& statement, std::int32_t line) {
  Beep();
  statement(line, [] {
    MsgBox("No employees clocked in on " + txtToday.Text.Get() + "!\rCan't run this job step.",
           BoxButtons::Ok, BoxIcon::Exclamation);
  });
}

}  // namespace ostrel
