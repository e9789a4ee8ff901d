#pragma once

// The operating system's files, for the rooms of the platform alone: opening, writing, flushing and
// renaming, with the system's reasons told as failures. Bytes go in and come out as they are.

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/values/failure.h"

namespace ostrel {

std::filesystem::path PathFromUtf8(std::string_view path);
std::string Utf8FromPath(const std::filesystem::path& path);

/// What was tried when the system refused; the same reason is another failure at another step.
enum class FileStep { OpenToRead, OpenToReplace, OpenToAppend, Transfer };

/// The failure of a number with its usual words and the path behind them.
Failure FileFailure(std::int32_t number, const std::string& path);

/// The failure that a code of errno stands for.
Failure SystemFailure(int code, FileStep step, const std::string& path);

/// One open file, closed when the object goes.
class OsFile {
 public:
  // Each throws the failure that errno stands for at its step.
  static OsFile OpenToRead(const std::string& path);
  static OsFile OpenToAppend(const std::string& path);  ///< created when missing

  /// Nothing when a file of that name is there already.
  ///   permissions  as of the system's mode bits; the user's mask applies
  static std::optional<OsFile> CreateNew(const std::string& path, int permissions);

  OsFile(OsFile&& other) noexcept;
  OsFile& operator=(OsFile&&) = delete;
  ~OsFile();

  std::string ReadAll() const;
  /// Writes all or throws; a part that was appended before the fault is cut off again.
  void Write(std::string_view bytes) const;
  void FlushToDisk() const;
  /// Owner and permissions of another file, as far as disk and user allow.
  void TakeRightsOf(const std::string& other) const;

 private:
  OsFile(int handle, std::string path);
  static OsFile Open(const std::string& path, int flags, FileStep step);

  int handle_;
  std::string path_;
};

/// Permission bits of an existing file.
std::optional<int> PermissionsOf(const std::string& path);

/// Whether this user may write an existing file.
bool MayWrite(const std::string& path);

/// Gives a file another name, in the place of what had that name, in one step.
void Rename(const std::string& from, const std::string& to);

/// Flushes the folder that a name is in: from then on the name survives a power cut.
void FlushName(const std::string& path);

/// Both. After a failure either name may be the file's.
void RenameDurably(const std::string& from, const std::string& to);

/// Last change of the content; nothing when there is no such file.
std::optional<std::time_t> LastChange(const std::string& path);

}  // namespace ostrel
