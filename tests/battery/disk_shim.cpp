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

template <typename Function>
Function* Next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::string PathOf(int handle) {
  char path[4096];
  const ssize_t size =
      readlink(("/proc/self/fd/" + std::to_string(handle)).c_str(), path, sizeof path);
  return {path, static_cast<std::size_t>(size < 0 ? 0 : size)};
}

std::string Normal(const std::string& path) {
  return std::filesystem::path(path).lexically_normal().string();
}

/// Asks the watcher, makes the call with what it left of the bytes, and tells the watcher.
template <typename Result, typename Call>
Result Watched(DiskCall asked, Call call) {
  const Aside aside;
  const int code = aside->Before(asked);
  if (code != 0) {
    errno = code;
    return Result{-1};
  }
  const Result result = call(std::as_const(asked));
  if (result < Result{0}) return result;
  const int kept = errno;
  if (asked.What == DiskCallKind::Create) {
    struct stat state {};
    if (stat(asked.Path.c_str(), &state) == 0) asked.Inode = state.st_ino;
  }
  aside->After(asked);
  errno = kept;
  return result;
}

bool Sees(const std::string& path) { return watcher != nullptr && watcher->Watches(Normal(path)); }

template <typename Result, typename Call>
Result OnHandle(DiskCallKind what, int handle, std::int64_t at, std::string_view bytes, Call call) {
  const std::string path = watcher == nullptr ? "" : PathOf(handle);
  DiskCall asked{what, path, {}, 0, at, 0, bytes};
  if (!Sees(path)) return call(std::as_const(asked));
  struct stat state {};
  fstat(handle, &state);
  asked.Inode = state.st_ino;
  asked.Size = state.st_size;
  if (what == DiskCallKind::Flush && S_ISDIR(state.st_mode)) asked.What = DiskCallKind::FlushFolder;
  return Watched<Result>(asked, call);
}

template <typename Call>
int OnPath(DiskCallKind what, const std::string& path, const std::string& to, Call call) {
  if (!Sees(path) && !Sees(to)) return call(DiskCall{what, path});
  DiskCall asked{what, Normal(path), to.empty() ? "" : Normal(to)};
  struct stat state {};
  if (stat(path.c_str(), &state) == 0) asked.Size = state.st_size;
  return Watched<int>(asked, call);
}

int Open(const char* path, int flags, mode_t mode) {
  static auto* const next = Next<int(const char*, int, ...)>("open64");
  const bool makes = (flags & O_CREAT) != 0 && access(path, F_OK) != 0;
  return OnPath(makes ? DiskCallKind::Create : DiskCallKind::Open, path, "",
                [&](const DiskCall&) { return next(path, flags, mode); });
}

int Flush(int handle) {
  return OnHandle<int>(DiskCallKind::Flush, handle, 0, {}, [](const DiskCall&) { return 0; });
}

ssize_t WriteAt(int handle, const void* bytes, std::size_t count, off_t at) {
  static auto* const next = Next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite64");
  return OnHandle<ssize_t>(
      DiskCallKind::Write, handle, at, {static_cast<const char*>(bytes), count},
      [&](const DiskCall& call) { return next(handle, bytes, call.Bytes.size(), at); });
}

int Cut(int handle, off_t size) {
  static auto* const next = Next<int(int, off_t)>("ftruncate64");
  return OnHandle<int>(DiskCallKind::Cut, handle, size, {},
                       [&](const DiskCall&) { return next(handle, size); });
}

}  // namespace

DiskWatcher::DiskWatcher(const std::string& folder) : folder_(folder) { watcher = this; }
DiskWatcher::~DiskWatcher() { watcher = nullptr; }

bool DiskWatcher::Watches(const std::string& path) const {
  return path.starts_with(folder_) &&
         (path.size() == folder_.size() || path[folder_.size()] == '/');
}

}  // namespace ostrel

// What the libraries call, in the place of the C library's own.

#define OSTREL_MODE(flags)            \
  mode_t mode = 0;                    \
  if (((flags)&O_CREAT) != 0) {       \
    va_list arguments;                \
    va_start(arguments, flags);       \
    mode = va_arg(arguments, mode_t); \
    va_end(arguments);                \
  }

extern "C" {

int open(const char* path, int flags, ...) {
  OSTREL_MODE(flags)
  return ostrel::Open(path, flags, mode);
}
int open64(const char* path, int flags, ...) {
  OSTREL_MODE(flags)
  return ostrel::Open(path, flags, mode);
}
ssize_t write(int handle, const void* bytes, std::size_t count) {
  static auto* const next = ostrel::Next<ssize_t(int, const void*, std::size_t)>("write");
  const bool appends = ostrel::watcher != nullptr && (fcntl(handle, F_GETFL) & O_APPEND) != 0;
  const off_t at = ostrel::watcher == nullptr ? 0 : lseek(handle, 0, appends ? SEEK_END : SEEK_CUR);
  return ostrel::OnHandle<ssize_t>(
      ostrel::DiskCallKind::Write, handle, at, {static_cast<const char*>(bytes), count},
      [&](const ostrel::DiskCall& call) { return next(handle, bytes, call.Bytes.size()); });
}
ssize_t pwrite(int handle, const void* bytes, std::size_t count, off_t at) {
  return ostrel::WriteAt(handle, bytes, count, at);
}
ssize_t pwrite64(int handle, const void* bytes, std::size_t count, off64_t at) {
  return ostrel::WriteAt(handle, bytes, count, at);
}
int fsync(int handle) { return ostrel::Flush(handle); }
int fdatasync(int handle) { return ostrel::Flush(handle); }
int ftruncate(int handle, off_t size) noexcept { return ostrel::Cut(handle, size); }
int ftruncate64(int handle, off64_t size) noexcept { return ostrel::Cut(handle, size); }
int rename(const char* from, const char* to) noexcept {
  static auto* const next = ostrel::Next<int(const char*, const char*)>("rename");
  return ostrel::OnPath(ostrel::DiskCallKind::Rename, from, to,
                        [&](const ostrel::DiskCall&) { return next(from, to); });
}
int unlink(const char* path) noexcept {
  static auto* const next = ostrel::Next<int(const char*)>("unlink");
  return ostrel::OnPath(ostrel::DiskCallKind::Remove, path, "",
                        [&](const ostrel::DiskCall&) { return next(path); });
}
int remove(const char* path) noexcept {
  static auto* const next = ostrel::Next<int(const char*)>("remove");
  return ostrel::OnPath(ostrel::DiskCallKind::Remove, path, "",
                        [&](const ostrel::DiskCall&) { return next(path); });
}
int unlinkat(int folder, const char* name, int flags) noexcept {
  static auto* const next = ostrel::Next<int(int, const char*, int)>("unlinkat");
  const bool whole = name[0] == '/' || folder == AT_FDCWD || ostrel::watcher == nullptr;
  return ostrel::OnPath(ostrel::DiskCallKind::Remove,
                        whole ? name : ostrel::PathOf(folder) + "/" + name, "",
                        [&](const ostrel::DiskCall&) { return next(folder, name, flags); });
}
int mkdir(const char* path, mode_t mode) noexcept {
  static auto* const next = ostrel::Next<int(const char*, mode_t)>("mkdir");
  return ostrel::OnPath(ostrel::DiskCallKind::MakeFolder, path, "",
                        [&](const ostrel::DiskCall&) { return next(path, mode); });
}
std::size_t fread(void* to, std::size_t size, std::size_t count, FILE* file) {
  static auto* const next =
      ostrel::Next<std::size_t(void*, std::size_t, std::size_t, FILE*)>("fread");
  if (ostrel::watcher != nullptr) {  // only watched, for what may happen to the disk meanwhile
    (void)ostrel::OnHandle<int>(ostrel::DiskCallKind::Read, fileno(file), 0, {},
                                [](const ostrel::DiskCall&) { return 0; });
  }
  return next(to, size, count, file);
}

}  // extern "C"
