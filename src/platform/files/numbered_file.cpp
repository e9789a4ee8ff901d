#include "platform/files/numbered_file.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/files/files.h"

namespace ostrel {

NewFile CreateNumberedFile(const std::string& folder, const std::string& name,
                           const std::string& extension) {
  constexpr int kPlainPermissions = 0666;
  std::error_code refused;
  std::filesystem::create_directories(PathFromUtf8(folder), refused);
  if (refused) {
    throw SystemFailure(refused.default_error_condition().value(), FileStep::OpenToReplace, folder);
  }
  const std::string stem = folder + kPathSeparator + name;
  std::string path = stem + extension;
  for (int number = 2;; ++number) {
    std::optional<OsFile> file = OsFile::CreateNew(path, kPlainPermissions);
    if (file) return {std::move(*file), path};
    path = stem + " (" + std::to_string(number) + ")" + extension;
  }
}

}  // namespace ostrel
