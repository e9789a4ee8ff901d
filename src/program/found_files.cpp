#include "program/found_files.h"

#include <algorithm>
#include <string>
#include <vector>

#include "exchange/year_pay.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/files/replace_file.h"
#include "store/office_tables.h"

namespace ostrel {

namespace {

/// Full paths of the files in a folder that match a pattern; none where there is no such folder.
std::vector<std::string> FilesIn(const std::string& folder, const std::string& pattern) {
  std::vector<std::string> paths;
  try {
    for (const std::string& name : ListFiles(folder + kPathSeparator + pattern)) {
      paths.push_back(folder + kPathSeparator + name);
    }
  } catch (const Failure&) {
    return {};
  }
  return paths;
}

std::vector<std::string> OfficeFiles() {
  std::vector<std::string> paths;
  for (const std::string& pattern : OfficeFilePatterns()) {
    const std::vector<std::string> found = FilesIn(DataPath, pattern);
    paths.insert(paths.end(), found.begin(), found.end());
  }
  return paths;
}

/// One that start-up opens is reported there when it is damaged.
bool IsOpenedAtStart(const std::string& path) {
  return std::any_of(kOfficeTables.begin(), kOfficeTables.end(), [&](const char* word) {
    return IsSameFile(path, ExistingPath(OfficeTablePath(word)));
  });
}

void HideFoundFiles(const std::vector<std::string>& officeFiles) {
  for (const std::string& path : officeFiles) HideFromOthers(path);
  for (const char* beside : {"", "-journal"}) HideFromOthers(ExistingPath(StorePath() + beside));
  HideFromOthers(LogPath());
  for (const std::string& path : FilesIn(PrintedFolder(), "*.pdf")) HideFromOthers(path);
}

}  // namespace

void TidyFoundFiles() {
  constexpr FailureTail statement{PrinModule, "TidyFoundFiles"};
  for (const std::string& folder : {DataPath, ConfigurationFolder(), RemoteDrive}) {
    if (!folder.empty()) SweepLeftOvers(folder);
  }
  const std::vector<std::string> officeFiles = OfficeFiles();
  HideFoundFiles(officeFiles);
  for (const std::string& path : officeFiles) {
    statement(12950, [&] {
      try {
        ClearYearPay(path);
      } catch (const Failure& failure) {
        const bool damaged = failure.Number == failure_number::kExternalTableFormat;
        if (!damaged || !IsOpenedAtStart(path)) throw;
      }
    });
  }
}

}  // namespace ostrel
