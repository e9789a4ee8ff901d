#pragma once

// A disk that fails when told. It stands between SQLite and the real disk and from the n-th change of
// a file on lets some changes fail. Flushing counts as a change but is not done, and waiting for a
// lock takes no time, so that tests are fast. Files that were opened before it came are not affected;
// those that were opened since are closed before it goes.

#include <sqlite3.h>

#include <map>

namespace ostrel {

class FaultVfs {
 public:
  FaultVfs() : real_(sqlite3_vfs_find(nullptr)), vfs_(*real_) {
    vfs_.zName = "fault";
    vfs_.pAppData = this;
    vfs_.xOpen = Open;
    vfs_.xSleep = [](sqlite3_vfs*, int microseconds) { return microseconds; };
    sqlite3_vfs_register(&vfs_, 1);
  }
  ~FaultVfs() {
    sqlite3_vfs_register(real_, 1);
    sqlite3_vfs_unregister(&vfs_);
  }
  FaultVfs(const FaultVfs&) = delete;
  FaultVfs& operator=(const FaultVfs&) = delete;

  /// After that many more changes succeeded, `failures` of them fail with the code.
  void FailAfter(int changes, int code, int failures) {
    to_come_ = changes;
    code_ = code;
    failures_ = failures;
  }
  void Heal() { failures_ = 0; }
  bool Armed() const { return failures_ > 0; }

  bool ReadOnly = false;  ///< files open as if they were write-protected

 private:
  /// What the real disk does with an open file, the changes excepted.
  struct Methods : sqlite3_io_methods {
    const sqlite3_io_methods* Real = nullptr;
    FaultVfs* Vfs = nullptr;
  };
  static const Methods& Of(const sqlite3_file* file) {
    return *static_cast<const Methods*>(file->pMethods);
  }

  int Change() {
    if (failures_ == 0 || to_come_-- > 0) return SQLITE_OK;
    --failures_;
    return code_;
  }
  static int Write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 at) {
    const int code = Of(file).Vfs->Change();
    return code == SQLITE_OK ? Of(file).Real->xWrite(file, bytes, count, at) : code;
  }
  static int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    const int code = Of(file).Vfs->Change();
    return code == SQLITE_OK ? Of(file).Real->xTruncate(file, size) : code;
  }
  static int Flush(sqlite3_file* file, int) { return Of(file).Vfs->Change(); }

  static int Open(sqlite3_vfs* vfs, sqlite3_filename name, sqlite3_file* file, int flags,
                  int* openedAs) {
    auto* self = static_cast<FaultVfs*>(vfs->pAppData);
    if (self->ReadOnly) {
      flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    }
    const int code = self->real_->xOpen(self->real_, name, file, flags, openedAs);
    if (file->pMethods == nullptr) return code;
    Methods& methods = self->methods_[file->pMethods];  // one of a few kinds of files
    methods = {*file->pMethods, file->pMethods, self};
    methods.iVersion = 1;  // without mapped memory
    methods.xWrite = Write;
    methods.xTruncate = Truncate;
    methods.xSync = Flush;
    file->pMethods = &methods;
    return code;
  }

  sqlite3_vfs* real_;
  sqlite3_vfs vfs_;
  std::map<const sqlite3_io_methods*, Methods> methods_;
  int to_come_ = 0;
  int code_ = SQLITE_OK;
  int failures_ = 0;
};

}  // namespace ostrel
