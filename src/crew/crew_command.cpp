#include "crew/crew_command.h"

#include "display/totals.h"
#include "frame/app_state.h"
#include "hours/time_question.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/format.h"
#include "scan_main/scan_main.h"
#include "store/number_list.h"
#include "work_day/work_day.h"

namespace ostrel {

void ForEachEmployee(const FailureTail& statement, std::int32_t line, std::string EmplList,
                     const std::function<void(std::int32_t EmplN)>& command) {
  statement(line, [] { PrinDb.ShareCommits(); });
  while (!EmplList.empty()) {
    std::int32_t EmplN = 0;
    if (IsDone(statement, line + 1, [&] { ParseNextEmpl(EmplList, EmplN); })) command(EmplN);
  }
  statement(line + 2, [] { PrinDb.CommitShared(); });
}

void BringDisplayUpToDate(const FailureTail& statement, std::int32_t line) {
  statement(line, [] { Data1.Refresh(); });
  statement(line + 1, [] { DisplayTotals(); });
  statement(line + 2, [] { DoEvents(); });
  statement(line + 3, [] { txtInput[kEmplBox].SetFocus(); });
}

bool StartsCrewCommand(const FailureTail& statement, std::int32_t line, CrewCommand& command) {
  if (!HasWorkDay()) {
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
