#include "reports/paper.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "frame/app_state.h"
#include "platform/files/files.h"
#include "platform/values/calendar.h"
#include "platform/values/dates.h"
#include "scan_main/scan_main.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

/// Sorted by name, the files of a folder are then sorted by day.
std::string DayForName() {
  if (!HasWorkDay()) return "All";
  const CivilDate day = CivilFromDays(static_cast<int>(DateValue(txtToday.Text)));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", day.Year, day.Month, day.Day);
  return text.data();
}

}  // namespace

PrintJobRequest ViewOnPaper(const std::string& contents) {
  return {.Name = DayForName() + " " + contents, .Folder = PrintedFolder()};
}

std::string WhereToFind(const std::vector<std::string>& files) {
  std::string first;
  std::size_t count = 0;
  for (const std::string& file : files) {
    if (file.empty()) continue;
    if (count++ == 0) first = file;
  }
  if (count == 0) return {};
  if (count == 1) return "No printer is installed. The report is in " + first;
  return "No printer is installed. The " + std::to_string(count) + " reports are in " +
         first.substr(0, first.rfind(kPathSeparator));
}

}  // namespace ostrel
