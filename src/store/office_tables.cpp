#include "store/office_tables.h"

#include <algorithm>

#include "frame/app_state.h"
#include "platform/database/table_folder.h"
#include "platform/files/files.h"

namespace ostrel {

namespace {

constexpr std::size_t kWordLength = 4;
constexpr std::size_t kBareFileNameLength = 8;  // "Hvcl.dbf"

}  // namespace

Database OpenOfficeTables() {
  return OpenTableFolder(
      DataPath,
      {.Updates = TableUpdates::Allowed, .Connect = DbaseConnect, .KeyField = "EMPL_NUMB"});
}

std::string OfficeTablePath(const char* word) {
  return DataPath + kPathSeparator + word + ClientNumb + DbaseExt;
}

std::vector<std::string> OfficeFilePatterns() {
  std::vector<std::string> patterns;
  patterns.reserve(kOfficeTables.size());
  for (const char* word : kOfficeTables) patterns.push_back(word + std::string("????.*"));
  return patterns;
}

bool IsClientNumber(const std::string& client) {
  return std::all_of(client.begin(), client.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
  });
}

bool NamesAClient(const std::string& fileName) { return fileName.size() > kBareFileNameLength; }

std::string ClientOf(const std::string& fileName) {
  return fileName.substr(kWordLength, kWordLength);
}

}  // namespace ostrel
