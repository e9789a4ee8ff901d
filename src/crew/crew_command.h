#pragma once

// What the commands over a whole crew have in common: the walk over the employees, which shares one
// durable commit and lets the view repaint on the way, and bringing the display up to date at the
// end.

#include <cstdint>
#include <functional>
#include <string>

#include "frame/failure_reporting.h"

namespace ostrel {

/// Calls `command` for each number of an employee list. Uses the statements `line` to `line` + 2 of
/// the caller's tail. Lines written before a failure stay written.
void ForEachEmployee(const FailureTail& statement, std::int32_t line, std::string EmplList,
                     const std::function<void(std::int32_t EmplN)>& command);

/// Shows the new lines and totals and puts the focus into the employee box. Uses the
/// statements `line` to `line` + 3.
void BringDisplayUpToDate(const FailureTail& statement, std::int32_t line);

/// Whether the command goes on: the date box holds a day, the operator has settled the time and
/// somebody is clocked in. Says why not; on the way out the focus and the pointer are as they should
/// be. Uses the statements `line` to `line` + 3; the wait pointer shows when it returns true.
struct CrewCommand {
  std::string Prompt;          // "Clock out all Employees"
  std::string Caption;         // of the menu entry
  std::string Time;            // out: the time text to use; empty when the answer held a date
  std::string EmplList;        // out
  std::int32_t ListCount = 0;  // out
};
bool StartsCrewCommand(const FailureTail& statement, std::int32_t line, CrewCommand& command);

}  // namespace ostrel
