#include "frame/job_step.h"

#include "entry/scan_main.h"
#include "platform/desktop/desktop.h"

namespace ostrel {

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
