#include "hours/employee_hours.h"

#include <array>
#include <cstdint>
#include <string>

#include "display/totals.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "hours/time_question.h"
#include "platform/desktop/desktop.h"
#include "platform/values/clock.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "store/number_list.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "CalcEmplHours"};

/// One clock-in of the day with what follows it up to the next.
struct Period {
  std::string InTime, OutTime;  // in TimeFormat; OutTime is empty while no end is known
  double Hours = 0;
  double PieceGross = 0;  // quantity times rate over the period's piecework
  Bookmark ClockIn = 0;   // the clock-in's line
};

/// Periods of one employee's day. Number 0 takes what comes before the first clock-in and is never
/// looked at; 200 clock-ins in a day are more than any crew makes.
constexpr std::size_t kMostPeriods = 200;
using Periods = std::array<Period, kMostPeriods + 1>;

double NumberOf(const char* field) { return LinesRs[field].Get().NumberOrZero(); }

double LineGross() { return NumberOf("QUANTITY") * NumberOf("RATE"); }

std::string TimeOfLine() { return Format(LinesRs["ETIME"].Get(), TimeFormat); }

void OpenPeriod(Periods& periods, std::int16_t& PeriodCount) {
  const auto number = static_cast<std::size_t>(PeriodCount) + 1;
  Period opened;
  opened.InTime = TimeOfLine();
  opened.ClockIn = LinesRs.GetBookmark();
  periods.at(number) = opened;  // beyond the end: a failure, and nothing has been changed
  ++PeriodCount;
  // A clock-in ends an open period at the same minute.
  Period& before = periods[number - 1];
  if (number > 1 && before.OutTime.empty()) before.OutTime = opened.InTime;
}

void TakeLine(const std::string& EventType, Periods& periods, std::int16_t& PeriodCount) {
  Period& running = periods[static_cast<std::size_t>(PeriodCount)];
  if (EventType == "I") {
    statement(4230, [&] { OpenPeriod(periods, PeriodCount); });
  } else if (EventType == "P") {
    statement(4240, [&] {
      if (NumberOf("QUANTITY") != 0) running.PieceGross += LineGross();
    });
  } else if (EventType == "O") {
    statement(4250, [&] { running.OutTime = TimeOfLine(); });
  }
}

/// Whether the walk over the employee's lines goes on; a line that cannot be stepped over ends it,
/// or the operator's Ignore would walk on the spot for ever.
bool StepOn(std::int32_t line) {
  bool stepped = false;
  statement(line, [&] {
    LinesRs.MoveNext();
    stepped = !LinesRs.Eof();
  });
  return stepped;
}

bool HasLines(std::int32_t line) {
  bool has = false;
  statement(line, [&] {
    has = LinesRs.RowCount() > 0;
    if (has) LinesRs.MoveFirst();
  });
  return has;
}

std::string EventTypeOfLine(std::int32_t line) {
  std::string EventType;
  statement(line, [&] { EventType = LinesRs["EVENT_TYPE"].Get().Characters(); });
  return EventType;
}

std::int16_t PairClockEvents(Periods& periods) {
  std::int16_t PeriodCount = 0;
  if (!HasLines(4200)) return PeriodCount;
  do {
    TakeLine(EventTypeOfLine(4210), periods, PeriodCount);
  } while (StepOn(4260));
  return PeriodCount;
}

/// An employee still clocked in has worked until now, but not past the default clock-out time.
void CloseLastPeriod(Period& last) {
  if (!last.OutTime.empty()) return;
  const std::string now = Format(Now(), TimeFormat);
  bool beforeClockOut = false;
  statement(4280, [&] { beforeClockOut = TimeValue(now) < TimeValue(DefaultClockOut); });
  last.OutTime = beforeClockOut ? now : DefaultClockOut;
}

/// The period's bounds as fractions of a day, both ends included.
struct Span {
  double From = 0, To = 0;
  bool Holds(double time) const { return From <= time && time <= To; }
};

void RewritePiecework(const Period& period) {
  double gross = 0;
  statement(4410, [&] { gross = LineGross(); });
  if (!IsDone(statement, 4420, [] { LinesRs.Edit(); })) return;
  statement(4430, [&] { LinesRs["GROSS"] = Format(gross, "#0.00"); });
  statement(4440, [&] {
    LinesRs["HOURS"] = Format(Divide(period.Hours * gross, period.PieceGross), "#0.00");
  });
  // Both read back, so that the rate on paper is the one of the rounded figures beside it.
  statement(4450, [] {
    LinesRs["HOUR_GROSS"] = Format(Divide(NumberOf("GROSS"), NumberOf("HOURS")), "#0.00");
  });
  statement(4460, [] { LinesRs.Update(); });
}

void SpreadHours(const Period& period) {
  Span span;
  statement(4350, [&] { span = {TimeValue(period.InTime), TimeValue(period.OutTime)}; });
  if (!HasLines(4360)) return;
  do {
    if (EventTypeOfLine(4370) != "P") continue;
    bool inPeriod = false;
    statement(4380,
              [&] { inPeriod = NumberOf("QUANTITY") != 0 && span.Holds(TimeValue(TimeOfLine())); });
    if (inPeriod) RewritePiecework(period);
  } while (StepOn(4470));
}

void RewriteClockIn(const Period& period) {
  if (!IsDone(statement, 4320, [] { LinesRs.Edit(); })) return;
  statement(4330, [&] { LinesRs["HOURS"] = period.PieceGross != 0 ? 0.0 : period.Hours; });
  statement(4340, [] { LinesRs.Update(); });
}

/// Hours of a period paid by the hour go to its clock-in; where piecework exists they go to that.
void RewritePeriod(Period& period) {
  statement(4300, [&] { period.Hours = HoursDiff(period.InTime, period.OutTime); });
  bool onClockIn = false;
  statement(4310, [&] {
    LinesRs.SetBookmark(period.ClockIn);
    onClockIn = true;
  });
  if (onClockIn) RewriteClockIn(period);
  if (period.PieceGross != 0) SpreadHours(period);
}

void CalcEmployee(std::int32_t EmplNumb) {
  const std::string query = "Select * from [OstrelPr]" + WhereWorkDay() +
                            " and EMPL_NUMB = " + std::to_string(EmplNumb) + " order by ETIME";
  statement(4190, [&] { LinesRs = PrinDb.OpenRecordset(query, RecordsetType::Dynaset); });
  Periods periods;
  const std::int16_t PeriodCount = PairClockEvents(periods);
  if (PeriodCount == 0) return;
  CloseLastPeriod(periods[static_cast<std::size_t>(PeriodCount)]);
  for (std::size_t n = 1; n <= static_cast<std::size_t>(PeriodCount); ++n)
    RewritePeriod(periods[n]);
}

}  // namespace

void CalcEmplHours() {
  JobStepAborted = false;
  if (!HasWorkDay()) {
    SayNoDay(statement, 4170);
    JobStepAborted = true;
    return;
  }
  SetMousePointer(MousePointer::Wait);
  std::int32_t ListCount = 0;
  std::string EmplList = EmployeesClockedIn(ListCount);
  if (ListCount == 0) {
    SayNobodyClockedIn(statement, 4174);
    JobStepAborted = true;
    SetMousePointer(MousePointer::Normal);
    return;
  }
  statement(4176, [] { PrinDb.ShareCommits(); });
  while (!EmplList.empty()) {
    std::int32_t EmplN = 0;
    statement(4180, [&] { ParseNextEmpl(EmplList, EmplN); });
    CalcEmployee(EmplN);
  }
  statement(4484, [] { PrinDb.CommitShared(); });
  statement(4490, [] { DisplayTotals(); });
  SetMousePointer(MousePointer::Normal);
}

}  // namespace ostrel
