#include "platform/files/staged_files.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/files/replace_file.h"
#include "platform/values/failure.h"

namespace ostrel {

namespace {

namespace fs = std::filesystem;

std::string In(const std::string& folder, const std::string& name) {
  return folder + kPathSeparator + name;
}

std::string NewFilesOf(const std::string& folder) { return In(folder, ".ostrel-new"); }
std::string ReadyFilesOf(const std::string& folder) { return In(folder, ".ostrel-ready"); }
std::string OldFilesOf(const std::string& folder) { return In(folder, ".ostrel-old"); }

// What cannot be removed now is removed at the next use.
void RemoveFolder(const std::string& path) noexcept {
  std::error_code later;
  fs::remove_all(PathFromUtf8(path), later);
}

/// The moves from the ready folder into place, each of which can be taken back.
class Moves {
 public:
  explicit Moves(const std::string& folder)
      : folder_(folder), ready_(ReadyFilesOf(folder)), old_(OldFilesOf(folder)) {}

  void PutAllInPlace(const std::vector<std::string>& patterns) {
    for (const std::string& pattern : patterns) {
      for (const std::string& name : ListFiles(In(ready_, pattern))) {
        if (name.find_first_of("*?") == std::string::npos) PutInPlace(name);
      }
    }
  }

  void TakeBack() {
    for (; !made_.empty(); made_.pop_back()) {
      const auto& [from, to] = made_.back();
      RenameDurably(to, from);
    }
  }

 private:
  void PutInPlace(const std::string& name) {
    for (const std::string& other : ListFiles(In(folder_, name))) Move(folder_, old_, other);
    Move(ready_, folder_, name);
  }

  void Move(const std::string& from, const std::string& to, const std::string& name) {
    const std::string target = In(to, name);
    Rename(In(from, name), target);
    made_.emplace_back(In(from, name), target);
    FlushName(target);
  }

  const std::string& folder_;
  std::string ready_;
  std::string old_;
  std::vector<std::pair<std::string, std::string>> made_;
};

// The ready folder goes first: as long as it is there, the old files may be wanted again.
void Clear(const std::string& folder) {
  RemoveFolder(ReadyFilesOf(folder));
  RemoveFolder(OldFilesOf(folder));
}

}  // namespace

StagedFiles::StagedFiles(std::string folder, std::vector<std::string> patterns)
    : folder_(std::move(folder)), patterns_(std::move(patterns)) {
  ResumeInstall(folder_, patterns_);
  MakeHiddenFolder(NewFilesOf(folder_));
}

StagedFiles::~StagedFiles() { RemoveFolder(NewFilesOf(folder_)); }

void StagedFiles::Add(const std::string& name, std::string_view content) const {
  ReplaceFile(In(NewFilesOf(folder_), name), content, Readers::UserAlone);
}

void StagedFiles::Install() const {
  MakeHiddenFolder(OldFilesOf(folder_));
  RenameDurably(NewFilesOf(folder_), ReadyFilesOf(folder_));
  Moves moves(folder_);
  try {
    moves.PutAllInPlace(patterns_);
  } catch (const Failure&) {
    // Should this fail too, all is left as it lies, for ResumeInstall.
    moves.TakeBack();
    RenameDurably(ReadyFilesOf(folder_), NewFilesOf(folder_));
    RemoveFolder(OldFilesOf(folder_));
    throw;
  }
  Clear(folder_);
}

// A link in place of the ready folder would lead to files of who knows whom.
void ResumeInstall(const std::string& folder, const std::vector<std::string>& patterns) {
  std::error_code unreachable;
  const std::string ready = ReadyFilesOf(folder);
  if (fs::is_directory(fs::symlink_status(PathFromUtf8(ready), unreachable))) {
    MakeHiddenFolder(OldFilesOf(folder));
    Moves(folder).PutAllInPlace(patterns);
  }
  Clear(folder);
  RemoveFolder(NewFilesOf(folder));
}

}  // namespace ostrel
