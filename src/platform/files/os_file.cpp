#include "platform/files/os_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/files/text_encoding.h"

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace ostrel {

namespace {

#ifdef _WIN32

using FileState = struct _stat64;
constexpr int kAppendFlags = _O_WRONLY | _O_APPEND | _O_CREAT;
constexpr int kCreateFlags = _O_WRONLY | _O_CREAT | _O_EXCL;
constexpr int kReadFlags = _O_RDONLY;

// The C library tells an empty drive and a file in use as refused permissions.
void CorrectErrno() {
  const DWORD reason = GetLastError();
  if (reason == ERROR_NOT_READY) errno = ENODEV;
  if (reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION) errno = EBUSY;
}

int SystemOpen(const std::string& path, int flags, Readers) {
  const int handle =
      _wopen(PathFromUtf8(path).c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
  if (handle < 0) CorrectErrno();
  return handle;
}
int SystemRead(int handle, char* bytes, std::size_t count) {
  return _read(handle, bytes, static_cast<unsigned>(count));
}
int SystemWrite(int handle, const char* bytes, std::size_t count) {
  return _write(handle, bytes, static_cast<unsigned>(count));
}
std::int64_t SystemEnd(int handle) { return _lseeki64(handle, 0, SEEK_END); }
bool SystemCut(int handle, std::int64_t size) { return _chsize_s(handle, size) == 0; }
bool SystemFlush(int handle) { return _commit(handle) == 0; }
bool SystemIsPlain(int handle) {
  struct _stat64 state {};
  return _fstat64(handle, &state) == 0 && (state.st_mode & _S_IFMT) == _S_IFREG;
}
void SystemClose(int handle) { _close(handle); }
bool SystemState(const std::string& path, FileState& state) {
  return _wstat64(PathFromUtf8(path).c_str(), &state) == 0;
}
bool SystemMayWrite(const std::string& path) {
  return _waccess(PathFromUtf8(path).c_str(), 2) == 0;
}
bool SystemRename(const std::string& from, const std::string& to) {
  if (MoveFileExW(PathFromUtf8(from).c_str(), PathFromUtf8(to).c_str(),
                  MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    return true;
  }
  errno = EACCES;
  CorrectErrno();
  return false;
}
bool FlushFolderOf(const std::string&) { return true; }  // the rename has written through
// Rights are taken over from the folder.
void CopyRights(int, const FileState&, Readers) {}
void HideHandle(int) {}

#else

using FileState = struct stat;
constexpr int kAppendFlags = O_WRONLY | O_APPEND | O_CREAT;
constexpr int kCreateFlags = O_WRONLY | O_CREAT | O_EXCL;
constexpr int kReadFlags = O_RDONLY;

constexpr mode_t kForEverybody = 0666;
constexpr mode_t kForUserAlone = 0600;
constexpr mode_t kOthersBits = 0077;

mode_t LeftTo(Readers readers, mode_t permissions) {
  return readers == Readers::UserAlone ? permissions & ~kOthersBits : permissions;
}

// Without waiting, should a pipe have taken the name since it was looked at.
int SystemOpen(const std::string& path, int flags, Readers readers) {
  return open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
              readers == Readers::UserAlone ? kForUserAlone : kForEverybody);
}
ssize_t SystemRead(int handle, char* bytes, std::size_t count) {
  return read(handle, bytes, count);
}
ssize_t SystemWrite(int handle, const char* bytes, std::size_t count) {
  return write(handle, bytes, count);
}
std::int64_t SystemEnd(int handle) { return lseek(handle, 0, SEEK_END); }
bool SystemCut(int handle, std::int64_t size) { return ftruncate(handle, size) == 0; }
bool SystemFlush(int handle) { return fsync(handle) == 0; }
bool SystemIsPlain(int handle) {
  struct stat state {};
  return fstat(handle, &state) == 0 && S_ISREG(state.st_mode);
}
void SystemClose(int handle) { close(handle); }
bool SystemState(const std::string& path, FileState& state) {
  return stat(path.c_str(), &state) == 0;
}
bool SystemMayWrite(const std::string& path) { return access(path.c_str(), W_OK) == 0; }
bool SystemRename(const std::string& from, const std::string& to) {
  return rename(from.c_str(), to.c_str()) == 0;
}

// A new name lives in the folder, which has to reach the disk too. Some file systems flush no
// folders and some folders may not be read; only an error of the disk counts.
bool FlushFolderOf(const std::string& path) {
  const std::filesystem::path folder = PathFromUtf8(path).parent_path();
  const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
  if (handle < 0) return true;
  const bool flushed = SystemFlush(handle) || errno != EIO;
  SystemClose(handle);
  if (!flushed) errno = EIO;
  return flushed;
}

// The owner goes first, since a change of it takes permissions away. Neither can be had on a disk
// that keeps none, nor the owner by a plain user; the file is as good without.
void CopyRights(int handle, const FileState& from, Readers readers) {
  FileState now{};
  if (fstat(handle, &now) != 0) return;
  const bool owned = now.st_uid == from.st_uid && now.st_gid == from.st_gid;
  if (!owned && fchown(handle, from.st_uid, from.st_gid) != 0) errno = 0;
  const mode_t wanted = LeftTo(readers, from.st_mode & 07777);
  if ((now.st_mode & 07777) != wanted && fchmod(handle, wanted) != 0) errno = 0;
}

void HideHandle(int handle) {
  FileState now{};
  if (fstat(handle, &now) == 0) CopyRights(handle, now, Readers::UserAlone);
}

#endif

// What the system's reasons mean to a person. Reasons that depend on the step stand in NumberFor.
constexpr std::pair<int, std::int32_t> kReasons[] = {
    {ENODEV, failure_number::kDiskNotReady},      {ENXIO, failure_number::kDiskNotReady},
    {EACCES, failure_number::kPathAccess},        {EPERM, failure_number::kPathAccess},
    {EROFS, failure_number::kPathAccess},         {EISDIR, failure_number::kPathAccess},
    {ENOSPC, failure_number::kDiskFull},          {EFBIG, failure_number::kDiskFull},
    {EBUSY, failure_number::kPermissionDenied},   {ETXTBSY, failure_number::kPermissionDenied},
    {ENAMETOOLONG, failure_number::kBadFileName}, {EINVAL, failure_number::kBadFileName},
    {EEXIST, failure_number::kFileExists},        {ENOTEMPTY, failure_number::kFileExists},
    {EILSEQ, failure_number::kBadFileName},       {ELOOP, failure_number::kBadFileName},
    {ENOMEM, failure_number::kOutOfMemory},
#ifndef _WIN32
    {ESTALE, failure_number::kDiskNotReady},      {EDQUOT, failure_number::kDiskFull},
#endif
#ifdef ENOMEDIUM
    {ENOMEDIUM, failure_number::kDiskNotReady},
#endif
};

constexpr std::pair<std::int32_t, const char*> kWords[] = {
    {failure_number::kOutOfMemory, "Out of memory"},
    {failure_number::kBadFileName, "Bad file name or number"},
    {failure_number::kFileNotFound, "File not found"},
    {failure_number::kFileAlreadyOpen, "File already open"},
    {failure_number::kDeviceIo, "Device I/O error"},
    {failure_number::kFileExists, "File already exists"},
    {failure_number::kDiskFull, "Disk full"},
    {failure_number::kPermissionDenied, "Permission denied"},
    {failure_number::kDiskNotReady, "Disk not ready"},
    {failure_number::kPathAccess, "Path/File access error"},
    {failure_number::kPathNotFound, "Path not found"},
};

template <typename Rows, typename Key>
auto RowOf(const Rows& rows, const Key& key) {
  return std::find_if(std::begin(rows), std::end(rows),
                      [&](const auto& row) { return row.first == key; });
}

[[noreturn]] void RefuseNoPlainFile(const std::string& path) {
  throw FileFailure(failure_number::kPathAccess, path + " (no plain file)");
}

std::int32_t NumberFor(int code, FileStep step) {
  if (code == ENOENT || code == ENOTDIR) {
    if (step == FileStep::OpenToRead) return failure_number::kFileNotFound;
    if (step == FileStep::OpenToAppend) return failure_number::kPathNotFound;
    return failure_number::kDiskNotReady;
  }
  if (code == EIO && step == FileStep::OpenToReplace) return failure_number::kDiskNotReady;
  const auto* row = RowOf(kReasons, code);
  return row == std::end(kReasons) ? failure_number::kDeviceIo : row->second;
}

}  // namespace

#ifdef _WIN32
std::filesystem::path PathFromUtf8(std::string_view path) { return ToWide(path); }
std::string Utf8FromPath(const std::filesystem::path& path) { return FromWide(path.native()); }
#else
std::filesystem::path PathFromUtf8(std::string_view path) { return path; }
std::string Utf8FromPath(const std::filesystem::path& path) { return path.native(); }
#endif

Failure FileFailure(std::int32_t number, const std::string& path) {
  const auto* row = RowOf(kWords, number);
  std::string text = row == std::end(kWords) ? "" : row->second;
  if (!path.empty()) text += ": " + path;
  return {number, text};
}

Failure SystemFailure(int code, FileStep step, const std::string& path) {
  return FileFailure(NumberFor(code, step), path);
}

bool IsNoPlainFile(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code unreachable;
  const fs::file_status itself = fs::symlink_status(PathFromUtf8(path), unreachable);
  return fs::exists(itself) && !fs::is_regular_file(fs::status(PathFromUtf8(path), unreachable));
}

void RequirePlainFile(const std::string& path) {
  if (IsNoPlainFile(path)) RefuseNoPlainFile(path);
}

bool IsSameFile(const std::string& one, const std::string& other) {
  std::error_code missing;
  return std::filesystem::equivalent(PathFromUtf8(one), PathFromUtf8(other), missing);
}

void HideFromOthers([[maybe_unused]] const std::string& path) noexcept {
#ifndef _WIN32
  FileState now{};
  if (stat(path.c_str(), &now) != 0 || !S_ISREG(now.st_mode)) return;
  const mode_t wanted = LeftTo(Readers::UserAlone, now.st_mode & 07777);
  if ((now.st_mode & 07777) != wanted && chmod(path.c_str(), wanted) != 0) errno = 0;
#endif
}

void MakeHiddenFolder(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code refused;
  const fs::path folder = PathFromUtf8(path);
  if (folder.has_parent_path()) fs::create_directories(folder.parent_path(), refused);
  if (!refused && fs::create_directory(folder, refused)) {
    std::error_code unknown;  // to the disk
    fs::permissions(folder, fs::perms::owner_all, unknown);
  }
  if (refused) {
    throw SystemFailure(refused.default_error_condition().value(), FileStep::OpenToReplace, path);
  }
}

OsFile::OsFile(int handle, std::string path) : handle_(handle), path_(std::move(path)) {}

OsFile::OsFile(OsFile&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)), path_(std::move(other.path_)) {}

OsFile::~OsFile() {
  if (handle_ >= 0) SystemClose(handle_);
}

OsFile OsFile::Open(const std::string& path, int flags, FileStep step) {
  std::error_code unreachable;  // the opening says why
  const auto status = std::filesystem::status(PathFromUtf8(path), unreachable);
  const bool there = std::filesystem::exists(status);
  if (there && !std::filesystem::is_regular_file(status)) RefuseNoPlainFile(path);
  const int handle = SystemOpen(path, flags, Readers::UserAlone);
  if (handle < 0) throw SystemFailure(errno, step, path);
  OsFile file(handle, path);
  if (!SystemIsPlain(handle)) RefuseNoPlainFile(path);
  return file;
}

OsFile OsFile::OpenToRead(const std::string& path) {
  return Open(path, kReadFlags, FileStep::OpenToRead);
}

OsFile OsFile::OpenToAppend(const std::string& path) {
  OsFile file = Open(path, kAppendFlags, FileStep::OpenToAppend);
  HideHandle(file.handle_);
  return file;
}

std::optional<OsFile> OsFile::CreateNew(const std::string& path, Readers readers) {
  const int handle = SystemOpen(path, kCreateFlags, readers);
  if (handle >= 0) return OsFile(handle, path);
  if (errno == EEXIST) return std::nullopt;
  throw SystemFailure(errno, FileStep::OpenToReplace, path);
}

std::string OsFile::Read(std::uint64_t atMost) const {
  std::string content;
  std::string block(std::min<std::uint64_t>(atMost, 65536), '\0');
  while (content.size() < atMost) {
    const std::size_t room = std::min<std::uint64_t>(block.size(), atMost - content.size());
    const auto count = SystemRead(handle_, block.data(), room);
    if (count < 0 && errno != EINTR) throw SystemFailure(errno, FileStep::Transfer, path_);
    if (count == 0) return content;
    if (count > 0) content.append(block.data(), static_cast<std::size_t>(count));
  }
  return content;
}

std::string OsFile::ReadFirst(std::size_t count) const { return Read(count); }

std::string OsFile::ReadAll(std::uint64_t atMost) const {
  std::string content = Read(atMost + 1);
  if (content.size() <= atMost) return content;
  throw FileFailure(failure_number::kPathAccess,
                    path_ + " (larger than " + std::to_string(atMost >> 20) + " MB)");
}

void OsFile::Write(std::string_view bytes) const {
  constexpr std::size_t kBlock = 1 << 30;  // what a system takes at a time has a limit
  const std::int64_t before = SystemEnd(handle_);
  std::size_t written = 0;
  while (written < bytes.size()) {
    const auto count = SystemWrite(handle_, bytes.data() + written,
                                   std::min<std::size_t>(bytes.size() - written, kBlock));
    if (count >= 0) {
      written += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      const int code = errno;
      // Another program may have appended behind our part; then it has to stay.
      const bool ours = SystemEnd(handle_) == before + static_cast<std::int64_t>(written);
      if (ours && written > 0) SystemCut(handle_, before);
      throw SystemFailure(code, FileStep::Transfer, path_);
    }
  }
}

void OsFile::FlushToDisk() const {
  if (!SystemFlush(handle_)) throw SystemFailure(errno, FileStep::Transfer, path_);
}

void OsFile::TakeRightsOf(const std::string& other, Readers readers) const {
  FileState state{};
  if (SystemState(other, state)) CopyRights(handle_, state, readers);
}

bool MayWrite(const std::string& path) { return SystemMayWrite(path); }

void Rename(const std::string& from, const std::string& to) {
  if (!SystemRename(from, to)) throw SystemFailure(errno, FileStep::Transfer, to);
}

void FlushName(const std::string& path) {
  if (!FlushFolderOf(path)) throw SystemFailure(errno, FileStep::Transfer, path);
}

void RenameDurably(const std::string& from, const std::string& to) {
  Rename(from, to);
  FlushName(to);
}

std::optional<std::time_t> LastChange(const std::string& path) {
  FileState state{};
  if (!SystemState(path, state)) return std::nullopt;
  return state.st_mtime;
}

}  // namespace ostrel
