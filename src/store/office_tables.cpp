#include "store/office_tables.h"

#include "frame/app_state.h"
#include "platform/files/files.h"

namespace ostrel {

namespace {

constexpr std::size_t kWordLength = 4;
constexpr std::size_t kBareFileNameLength = 8;  // "Hvcl.dbf"

}  // namespace

std::string OfficeTablePath(const char* word) {
  return DataPath + kPathSeparator + word + ClientNumb + DbaseExt;
}

std::vector<std::string> OfficeFilePatterns() {
  std::vector<std::string> patterns;
  for (const char* word : kOfficeTables) patterns.push_back(word + std::string("????.*"));
  return patterns;
}

bool NamesAClient(const std::string& fileName) { return fileName.size() > kBareFileNameLength; }

std::string ClientOf(const std::string& fileName) {
  return fileName.substr(kWordLength, kWordLength);
}

}  // namespace ostrel
