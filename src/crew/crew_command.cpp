#include "crew/crew_command.h"

#include "display/totals.h"
#include "entry/date_comment_boxes.h"
#include "entry/scan_main.h"
#include "frame/app_state.h"
#include "frame/job_step.h"
#include "hours/auto_clock_in.h"
#include "hours/time_question.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "store/lookups.h"

namespace ostrel {

void ForEachEmployee(const FailureTail& statement, std::int32_t line, std::string EmplList,
                     const std::function<void(std::int32_t EmplN)>& command) {
  statement(line, [] { PrinDb.ShareCommits(); });
  while (!EmplList.empty()) {
    std::int32_t EmplN = 0;
    statement(line + 1, [&] { ParseNextEmpl(EmplList, EmplN); });
    command(EmplN);
  }
  statement(line + 2, [] { PrinDb.CommitShared(); });
}

void BringDisplayUpToDate(const FailureTail& statement, std::int32_t line) {
  statement(line, [] { Data1.Refresh(); });
  statement(line + 1, [] { DisplayTotals(); });
  statement(line + 2, [] { DoEvents(); });
  statement(line + 3, [] { txtInput[kEmplBox].SetFocus(); });
}

std::string EmployeesClockedIn(std::int32_t& ListCount) {
  std::string NotList;
  return DomainList("Prin App", "EMPL_NUMB", WhereDay(txtToday.Text) + " and EVENT_TYPE = 'I'",
                    NotList, ListCount);
}

std::string OnDayOfDateBox(const std::string& time) { return DayOfDateBox() + " " + time; }

bool StartsDayCommand(const FailureTail& statement, std::int32_t line, DayCommand& command) {
  if (!IsDate(txtToday.Text)) {
    SayNoDay(statement, line);
    return false;
  }
  std::string DefaultT = Format(Now(), TimeFormat);
  std::int16_t ReturnVal = kTimeCancelled;
  statement(line + 1,
            [&] { AskTime(command.Prompt, DefaultT, command.Caption, command.Time, ReturnVal); });
  if (ReturnVal == kTimeCancelled) {
    statement(line + 2, [] { txtInput[kEmplBox].SetFocus(); });
    return false;
  }
  SetMousePointer(MousePointer::Wait);
  command.EmplList = EmployeesClockedIn(command.ListCount);
  if (command.ListCount != 0) return true;
  SayNobodyClockedIn(statement, line + 3);
  SetMousePointer(MousePointer::Normal);
  return false;
}

}  // namespace ostrel
