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

/// On Windows a byte that is no UTF-8 becomes "?", which no name there holds.
std::filesystem::path PathFromUtf8(std::string_view path);
std::string Utf8FromPath(const std::filesystem::path& path);

/// What was tried when the system refused; the same reason is another failure at another step.
enum class FileStep { OpenToRead, OpenToReplace, OpenToAppend, Transfer };

/// The failure of a number with its usual words and the path behind them.
Failure FileFailure(std::int32_t number, const std::string& path);

/// The failure that a code of errno stands for.
Failure SystemFailure(int code, FileStep step, const std::string& path);

/// Whether there is something under that name, its letters as they stand, that is no plain file, or a
/// link to one, either: a folder, a pipe, a device, or a link that leads nowhere because its disk is
/// not in.
bool IsNoPlainFile(const std::string& path);

/// throws  Failure 75, naming the path, where IsNoPlainFile
void RequirePlainFile(const std::string& path);

/// Whether two names, however they are spelt, stand for one existing file.
bool IsSameFile(const std::string& one, const std::string& other);

/// Who may read a file that the program makes. What has anybody's pay in it is for its user alone.
enum class Readers { Everybody, UserAlone };

/// Takes from everybody else the rights to a file that is there, as far as disk and user allow. On
/// Windows the folder of a file says who may read it.
void HideFromOthers(const std::string& path) noexcept;

/// A folder that only its user may enter, and the folders above it that are missing.
///   throws  the system's failure when it cannot be made
void MakeHiddenFolder(const std::string& path);

/// One open file, closed when the object goes. Only plain files are opened, and never waited for: a
/// pipe would have the program stand until somebody writes into it, a device need have no end.
class OsFile {
 public:
  // Each throws the failure that errno stands for at its step, 75 for what is no plain file.
  static OsFile OpenToRead(const std::string& path);
  /// Created when missing; hidden from others in either case.
  static OsFile OpenToAppend(const std::string& path);

  /// Nothing when a file of that name is there already. The user's mask applies.
  static std::optional<OsFile> CreateNew(const std::string& path, Readers readers);

  OsFile(OsFile&& other) noexcept;
  OsFile& operator=(OsFile&&) = delete;
  ~OsFile();

  ///   throws  also Failure 75 when there are more bytes than anybody can want of such a file
  std::string ReadAll(std::uint64_t atMost) const;
  std::string ReadFirst(std::size_t count) const;  ///< fewer where the file is shorter
  /// Writes all or throws; a part that was appended before the fault is cut off again.
  void Write(std::string_view bytes) const;
  void FlushToDisk() const;
  /// Owner and permissions of another file, as far as disk and user allow; of the permissions those
  /// that leave it to its readers.
  void TakeRightsOf(const std::string& other, Readers readers) const;

 private:
  OsFile(int handle, std::string path);
  static OsFile Open(const std::string& path, int flags, FileStep step);
  std::string Read(std::uint64_t atMost) const;

  int handle_;
  std::string path_;
};

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
