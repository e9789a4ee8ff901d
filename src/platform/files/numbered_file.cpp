#include "platform/files/numbered_file.h"

#include <optional>
#include <utility>

#include "platform/files/files.h"

namespace ostrel {

NewFile CreateNumberedFile(const std::string& folder, const std::string& name,
                           const std::string& extension) {
  MakeHiddenFolder(folder);
  const std::string stem = folder + kPathSeparator + name;
  std::string path = stem + extension;
  for (int number = 2;; ++number) {
    std::optional<OsFile> file = OsFile::CreateNew(path, Readers::UserAlone);
    if (file) return {std::move(*file), path};
    path = stem + " (" + std::to_string(number) + ")" + extension;
  }
}

}  // namespace ostrel
