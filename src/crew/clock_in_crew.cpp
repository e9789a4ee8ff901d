#include "crew/clock_in_crew.h"

#include <cstdint>
#include <string>

#include "crew/crew_command.h"
#include "entry/write_line.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"

namespace ostrel {

namespace {

// Nothing above this command could report a failure of its own, so it has a tail like the others.
constexpr FailureTail statement{ScannerModule, "mnuClockInACrew_Click"};

std::string OfferedCrew() {
  const std::string& comment = txtComments.Text;
  const std::size_t mark = comment.find('#');
  double crew = 0;
  if (mark != std::string::npos)
    statement(2310, [&] { crew = NumericPrefix(comment.substr(mark + 1)); });
  return GeneralText(crew);
}

/// How the messages name the crew: a number as it was typed, "09"; of 12a the number alone.
std::string NameOfCrew(const std::string& CrewNumber, double crew) {
  double whole = 0;  // no crew's number
  try {
    whole = WholeNumberText(CrewNumber);
  } catch (const Failure&) {
    whole = 0;
  }
  return whole == crew ? CrewNumber : GeneralText(crew);
}

void Refuse(std::int32_t line, const std::string& reason) {
  Beep();
  statement(line, [&] {
    MsgBox(reason + "\rAborting job step.", BoxButtons::Ok, BoxIcon::Information,
           mnuClockInACrew.Caption);
  });
}

}  // namespace

void mnuClockInACrew_Click() {
  const std::string offered = OfferedCrew();
  std::string CrewNumber;
  statement(2320, [&] {
    CrewNumber = InputBox("\rCrew Number to Clock In?", mnuClockInACrew.Caption, offered);
  });
  double crew = 0;
  statement(2330, [&] { crew = NumericPrefix(CrewNumber); });
  if (crew == 0) return Refuse(2340, "No Crew Number specified.");
  const std::string shownCrew = NameOfCrew(CrewNumber, crew);

  std::string NotList;
  std::int32_t ListCount = 0;
  std::string EmplList =
      DomainList("Prms", "EMPL_NUMB", " where CREW =" + SignedNumberText(crew), NotList, ListCount);
  if (ListCount == 0) return Refuse(2350, "No Employees on Crew Number " + shownCrew);

  SetMousePointer(MousePointer::Wait);
  if (mnuUseTimeClock.Checked) statement(2360, [] { Option1[kClockIn].Value = true; });
  ForEachEmployee(statement, 2370, EmplList, [](std::int32_t EmplN) {
    txtInput[kEmplBox].Text = std::to_string(EmplN);
    statement(2376, [] { WriteValues(); });
  });
  SetMousePointer(MousePointer::Normal);
  statement(2380, [&] {
    MsgBox(
        SignedNumberText(ListCount) + " employees in Crew#" + shownCrew + " have been clocked in.",
        BoxButtons::Ok, BoxIcon::Information, mnuClockInACrew.Caption);
  });
  BringDisplayUpToDate(statement, 2390);
}

}  // namespace ostrel
