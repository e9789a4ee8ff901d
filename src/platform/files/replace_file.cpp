#include "platform/files/replace_file.h"

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <random>
#include <system_error>
#include <utility>

#include "platform/files/os_file.h"

namespace ostrel {

namespace {

namespace fs = std::filesystem;

constexpr int kLinksAtMost = 40;
constexpr int kNewFilePermissions = 0666;

// The file that a chain of links leads to, which need not exist.
std::string TargetOf(const std::string& path) {
  fs::path target = PathFromUtf8(path);
  for (int links = 0; links < kLinksAtMost; ++links) {
    std::error_code none;
    const fs::path next = fs::read_symlink(target, none);
    if (none) return Utf8FromPath(target);
    target = target.parent_path() / next;
  }
  throw SystemFailure(ELOOP, FileStep::OpenToReplace, path);
}

// Renaming would replace a file that is write-protected, or no file at all but a device.
void CheckMayReplace(const std::string& target) {
  if (!PathFromUtf8(target).has_filename()) throw FileFailure(failure_number::kBadFileName, target);
  std::error_code unknown;  // what cannot be looked at shows when the new file is made
  const fs::file_status status = fs::status(PathFromUtf8(target), unknown);
  if (!fs::exists(status)) return;
  if (!fs::is_regular_file(status) || !MayWrite(target)) {
    throw FileFailure(failure_number::kPathAccess, target);
  }
}

// A name that nobody else comes upon, and that no listing of the program's files matches.
std::string NameBeside(const std::string& target) {
  static std::random_device random;
  const std::uint64_t number = static_cast<std::uint64_t>(random()) << 32 | random();
  char digits[16];
  char* const end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
  const std::string name = "~" + std::string(digits, end) + ".tmp";
  return Utf8FromPath(PathFromUtf8(target).parent_path() / name);
}

// The new file while it stands beside the old one; goes away unless it has taken its place.
class NewFile {
 public:
  explicit NewFile(std::string target) : target_(std::move(target)) {
    CheckMayReplace(target_);
    const std::optional<int> old = PermissionsOf(target_);
    while (!file_) {
      path_ = NameBeside(target_);
      auto made = OsFile::CreateNew(path_, old.value_or(kNewFilePermissions));
      if (made) file_.emplace(std::move(*made));
    }
    if (old) file_->TakeRightsOf(target_);
  }
  ~NewFile() {
    file_.reset();
    std::error_code ignored;
    if (!path_.empty()) fs::remove(PathFromUtf8(path_), ignored);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void Fill(std::string_view content) {
    file_->Write(content);
    file_->FlushToDisk();
  }

  void TakePlace() {
    file_.reset();
    RenameDurably(path_, target_);
    path_.clear();
  }

 private:
  std::string target_;
  std::string path_;
  std::optional<OsFile> file_;
};

}  // namespace

void ReplaceFile(const std::string& path, std::string_view content) {
  NewFile file(TargetOf(path));
  file.Fill(content);
  file.TakePlace();
}

void TryReplacing(const std::string& path) { const NewFile file(TargetOf(path)); }

}  // namespace ostrel
