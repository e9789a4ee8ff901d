#include "battery/disk_shim.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <utility>

namespace ostrel {
namespace {

DiskWatcher* watcher = nullptr;

/// While the watcher itself works, its own calls go straight through.
class Aside {
 public:
  Aside() : aside_(std::exchange(watcher, nullptr)) {}
  ~Aside() { watcher = aside_; }
  Aside(const Aside&) = delete;
  Aside& operator=(const Aside&) = delete;
  DiskWatcher* operator->() const { return aside_; }

 private:
  DiskWatcher* aside_;
};

/// The C library's own.
template <typename Function>
Function* Next(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::string PathOf(int handle) {
  if (watcher == nullptr) return "";
  std::error_code closed;
  return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(handle), closed);
}

std::string Normal(const std::string& path) {
  return path.empty() ? "" : std::filesystem::path(path).lexically_normal().string();
}

bool Watched(const std::string& path) {
  return watcher != nullptr && (path + "/").starts_with(watcher->Folder + "/");
}

/// Asks the watcher, makes the call with what it left of the bytes, and tells the watcher.
template <typename Call>
auto Ask(DiskCall asked, Call call) -> decltype(call(asked)) {
  asked.Path = Normal(asked.Path);
  asked.To = Normal(asked.To);
  if (!Watched(asked.Path) && !Watched(asked.To)) return call(asked);
  const Aside aside;
  struct stat state {};
  if (stat(asked.Path.c_str(), &state) == 0) asked.Size = state.st_size;
  if (asked.What == DiskOp::Flush && S_ISDIR(state.st_mode)) {
    asked.What = DiskOp::FlushFolder;
  }
  if (const int code = aside->Before(asked); code != 0) {
    errno = code;
    return -1;
  }
  const auto result = call(std::as_const(asked));
  const int kept = errno;
  if (result >= 0) aside->After(asked);
  errno = kept;
  return result;
}

template <typename Call>
ssize_t AskToWrite(int handle, const void* bytes, std::size_t count, off_t at, Call next) {
  const std::string_view all(static_cast<const char*>(bytes), count);
  return Ask({DiskOp::Write, PathOf(handle), {}, at, all},
             [&](const DiskCall& call) { return next(call.Bytes.size()); });
}

}  // namespace

DiskWatcher::DiskWatcher(const std::string& folder) : Folder(folder) { watcher = this; }
DiskWatcher::~DiskWatcher() { watcher = nullptr; }

}  // namespace ostrel

// What the libraries call, in the place of the C library's own.

extern "C" {

using ostrel::DiskCall;
using ostrel::DiskOp;

int open64(const char* path, int flags, ...) {
  static auto* const next = ostrel::Next(open64, "open64");
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  const bool makes = (flags & O_CREAT) != 0 && access(path, F_OK) != 0;
  return ostrel::Ask({makes ? DiskOp::Create : DiskOp::Open, path},
                     [&](const DiskCall&) { return next(path, flags, mode); });
}
int open(const char* path, int flags, ...) __attribute__((alias("open64")));

ssize_t write(int handle, const void* bytes, std::size_t count) {
  static auto* const next = ostrel::Next(write, "write");
  const bool appends = ostrel::watcher != nullptr && (fcntl(handle, F_GETFL) & O_APPEND) != 0;
  const off_t at = ostrel::watcher == nullptr ? 0 : lseek(handle, 0, appends ? SEEK_END : SEEK_CUR);
  return ostrel::AskToWrite(handle, bytes, count, at,
                            [&](std::size_t some) { return next(handle, bytes, some); });
}

ssize_t pwrite64(int handle, const void* bytes, std::size_t count, off64_t at) {
  static auto* const next = ostrel::Next(pwrite64, "pwrite64");
  return ostrel::AskToWrite(handle, bytes, count, at,
                            [&](std::size_t some) { return next(handle, bytes, some, at); });
}
ssize_t pwrite(int, const void*, std::size_t, off_t) __attribute__((alias("pwrite64")));

int fsync(int handle) {
  return ostrel::Ask({DiskOp::Flush, ostrel::PathOf(handle)}, [](const DiskCall&) { return 0; });
}
int fdatasync(int) __attribute__((alias("fsync")));

int ftruncate64(int handle, off64_t size) noexcept {
  static auto* const next = ostrel::Next(ftruncate64, "ftruncate64");
  return ostrel::Ask({DiskOp::Cut, ostrel::PathOf(handle), {}, size},
                     [&](const DiskCall&) { return next(handle, size); });
}
int ftruncate(int, off_t) noexcept __attribute__((alias("ftruncate64")));

int rename(const char* from, const char* to) noexcept {
  static auto* const next = ostrel::Next(rename, "rename");
  return ostrel::Ask({DiskOp::Rename, from, to}, [&](const DiskCall&) { return next(from, to); });
}
int unlink(const char* path) noexcept {
  static auto* const next = ostrel::Next(unlink, "unlink");
  return ostrel::Ask({DiskOp::Remove, path}, [&](const DiskCall&) { return next(path); });
}
int remove(const char* path) noexcept {
  static auto* const next = ostrel::Next(remove, "remove");
  return ostrel::Ask({DiskOp::Remove, path}, [&](const DiskCall&) { return next(path); });
}
int unlinkat(int folder, const char* name, int flags) noexcept {
  static auto* const next = ostrel::Next(unlinkat, "unlinkat");
  const std::string path =
      name[0] == '/' || folder == AT_FDCWD ? name : ostrel::PathOf(folder) + "/" + name;
  return ostrel::Ask({DiskOp::Remove, path},
                     [&](const DiskCall&) { return next(folder, name, flags); });
}
int mkdir(const char* path, mode_t mode) noexcept {
  static auto* const next = ostrel::Next(mkdir, "mkdir");
  return ostrel::Ask({DiskOp::NewFolder, path}, [&](const DiskCall&) { return next(path, mode); });
}
ssize_t read(int handle, void* to, std::size_t count) {
  static auto* const next = ostrel::Next(read, "read");
  ostrel::Ask({DiskOp::Read, ostrel::PathOf(handle)}, [](const DiskCall&) { return 0; });
  return next(handle, to, count);
}
std::size_t fread(void* to, std::size_t size, std::size_t count, FILE* file) {
  static auto* const next = ostrel::Next(fread, "fread");
  if (ostrel::watcher != nullptr) {  // only watched, for what may happen to the disk meanwhile
    ostrel::Ask({DiskOp::Read, ostrel::PathOf(fileno(file))}, [](const DiskCall&) { return 0; });
  }
  return next(to, size, count, file);
}

}  // extern "C"
