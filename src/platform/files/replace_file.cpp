#include "platform/files/replace_file.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <optional>
#include <random>
#include <system_error>
#include <utility>
#include <vector>

namespace ostrel {

namespace {

namespace fs = std::filesystem;

constexpr int kLinksAtMost = 40;

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

constexpr std::string_view kNameBegins = "~", kNameEnds = ".tmp";
constexpr std::size_t kDigits = 16;

// A name that nobody else comes upon, and that no listing of the program's files matches.
std::string NameBeside(const std::string& target) {
  static std::random_device random;
  const std::uint64_t number = static_cast<std::uint64_t>(random()) << 32 | random();
  char digits[kDigits];
  char* const end = std::to_chars(digits, std::end(digits), number, 16).ptr;
  std::string name(kNameBegins);
  name.append(kDigits - static_cast<std::size_t>(end - digits), '0').append(digits, end);
  name.append(kNameEnds);
  return Utf8FromPath(PathFromUtf8(target).parent_path() / name);
}

// Temporary files of others are called something.tmp too. Once the zeros in front were left out.
bool IsNameBeside(std::string_view name) {
  if (!name.starts_with(kNameBegins) || !name.ends_with(kNameEnds)) return false;
  name.remove_prefix(kNameBegins.size());
  name.remove_suffix(std::min(name.size(), kNameEnds.size()));
  const bool hexadecimal = name.find_first_not_of("0123456789abcdef") == std::string_view::npos;
  return hexadecimal && name.size() <= kDigits && name.size() > kDigits / 2;
}

// The new file while it stands beside the old one; goes away unless it has taken its place.
class NewFile {
 public:
  NewFile(std::string target, Readers readers) : target_(std::move(target)) {
    CheckMayReplace(target_);
    while (!file_) {
      path_ = NameBeside(target_);
      // What is there may be for fewer than the new file would be.
      const bool replaces = LastChange(target_).has_value();
      auto made = OsFile::CreateNew(path_, replaces ? Readers::UserAlone : readers);
      if (made) file_.emplace(std::move(*made));
    }
    file_->TakeRightsOf(target_, readers);
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

void ReplaceFile(const std::string& path, std::string_view content, Readers readers) {
  NewFile file(TargetOf(path), readers);
  file.Fill(content);
  file.TakePlace();
}

void TryReplacing(const std::string& path) {
  const NewFile file(TargetOf(path), Readers::Everybody);
}

void SweepLeftOvers(const std::string& folder) noexcept {
  std::error_code later;
  std::vector<fs::path> left;
  fs::directory_iterator entry(PathFromUtf8(folder), later);
  while (!later && entry != fs::directory_iterator()) {
    std::error_code unreachable;
    const bool plain = fs::is_regular_file(entry->symlink_status(unreachable));
    if (plain && IsNameBeside(Utf8FromPath(entry->path().filename()))) {
      left.push_back(entry->path());
    }
    entry.increment(later);
  }
  for (const fs::path& path : left) fs::remove(path, later);
}

}  // namespace ostrel
