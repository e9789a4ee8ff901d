#include "hours/time_question.h"

#include <cmath>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "hours/typed_time.h"
#include "platform/desktop/desktop.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

constexpr double kMinutesPerHour = 60;
constexpr double kMinutesPerDay = 24 * kMinutesPerHour;

/// Hours and minutes of a text in the pattern "hh:mm".
struct ClockHands {
  double Hours;
  double Minutes;
};

ClockHands HandsOf(const std::string& text) {
  const std::size_t minutes = text.size() < 2 ? 0 : text.size() - 2;
  return {NumericPrefix(text.substr(0, 2)), NumericPrefix(text.substr(minutes))};
}

/// What the operator typed in place of the offered time, which a bad answer leaves in force, as does
/// a failure that is ignored.
void TakeAnswer(const FailureTail& statement, const std::string& answer, std::string& DefaultT,
                std::string& TimeOut) {
  const bool isTime = IsDate(answer);
  if (isTime && DateValue(answer) >= 1) return;
  TimeOut = DefaultT;
  if (isTime) {
    statement(3690, [&] { TimeOut = AppendAmPm(answer); });
  } else if (answer.front() == '-' || answer.front() == '+') {
    statement(3700, [&] { TimeOut = AdjustTime(DefaultT, NumericPrefix(answer)); });
  }
}

}  // namespace

double HoursDiff(const std::string& StartTime, const std::string& StopTime) {
  constexpr FailureTail statement{ScannerModule, "HoursDiff"};
  double difference = 0;
  std::string text;
  statement(4610, [&] { difference = TimeValue(StopTime) - TimeValue(StartTime); });
  statement(4620, [&] { text = Format(difference, "hh:mm"); });
  const ClockHands hands = HandsOf(text);
  double hours = 0;
  statement(4630, [&] {
    hours = NumericPrefix(Format(hands.Hours + hands.Minutes / kMinutesPerHour, "#0.00"));
  });
  return hours;
}

std::string AdjustTime(std::string& OldTime, double DeltaMin) {
  constexpr FailureTail statement{ScannerModule, "AdjustTime"};
  std::string adjusted = OldTime;
  if (!IsDone(statement, 3510, [&] { OldTime = Format(TimeValue(OldTime), "hh:mm"); })) {
    return adjusted;
  }
  const ClockHands hands = HandsOf(OldTime);
  double minutes = hands.Minutes;
  statement(3520, [&] { minutes = ToInteger(hands.Minutes + DeltaMin); });
  minutes += hands.Hours * kMinutesPerHour;
  minutes -= std::floor(minutes / kMinutesPerDay) * kMinutesPerDay;
  statement(3530, [&] { adjusted = Format(minutes / kMinutesPerDay, TimeFormat); });
  return adjusted;
}

void AskTime(const std::string& PromptT, std::string& DefaultT, const std::string& Hdg,
             std::string& TimeOut, std::int16_t& ReturnVal) {
  constexpr FailureTail statement{ScannerModule, "AskTime"};
  const std::string question = PromptT + " at " + DefaultT + "?";
  BoxAnswer button = BoxAnswer::Cancel;
  statement(3610,
            [&] { button = MsgBox(question, BoxButtons::YesNoCancel, BoxIcon::Question, Hdg); });
  ReturnVal = static_cast<std::int16_t>(button);
  if (ReturnVal == kTimeConfirmed) TimeOut = DefaultT;
  if (ReturnVal != kTimeChanged) return;

  std::string answer;
  statement(3640, [&] { answer = Trim(InputBox("\r" + question, Hdg, DefaultT)); });
  if (answer.empty()) answer = " ";
  TakeAnswer(statement, answer, DefaultT, TimeOut);
}

}  // namespace ostrel
