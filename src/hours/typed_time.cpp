#include "hours/typed_time.h"

#include "frame/app_state.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"

namespace ostrel {

std::string AppendAmPm(const std::string& TimeIn) {
  constexpr double kNoon = 12;
  std::string working;
  if (ContainsText(TimeIn, "p") || ContainsText(TimeIn, "a")) {
    working = IsDate(TimeIn) ? TimeIn : "12:00 pm";
  } else {
    double hour = NumericPrefix(TimeIn);
    if (!(hour >= 1 && hour <= 23)) hour = kNoon;
    working = Format(hour, "#0.00") + (hour <= 6 || hour >= kNoon ? " pm" : " am");
  }
  return Format(TimeValue(working), TimeFormat);
}

}  // namespace ostrel
