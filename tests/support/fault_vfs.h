#pragma once

// A disk that fails when told. It stands between SQLite and the real disk, forwards everything, and
// from the n-th change of a file on lets some changes fail. Flushing counts as a change but is not
// forwarded, and waiting for a lock takes no time, so that tests are fast. Files that were opened
// before it came are not affected.

#include <sqlite3.h>

#include <new>

namespace ostrel {

class FaultVfs {
 public:
  FaultVfs() : real_(sqlite3_vfs_find(nullptr)), vfs_(*real_) {
    vfs_.zName = "fault";
    vfs_.pAppData = this;
    vfs_.szOsFile = static_cast<int>(sizeof(File)) + real_->szOsFile;
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
  struct File : sqlite3_file {
    FaultVfs* Vfs;
    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
  };

  int Change() {
    if (failures_ == 0 || to_come_-- > 0) return SQLITE_OK;
    --failures_;
    return code_;
  }

  static int Open(sqlite3_vfs* vfs, sqlite3_filename name, sqlite3_file* file, int flags,
                  int* openedAs) {
    auto* self = static_cast<FaultVfs*>(vfs->pAppData);
    auto* wrapped = new (file) File;
    wrapped->Vfs = self;
    wrapped->pMethods = nullptr;
    if (self->ReadOnly) {
      flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    }
    const int code = self->real_->xOpen(self->real_, name, wrapped->Real(), flags, openedAs);
    if (wrapped->Real()->pMethods != nullptr) wrapped->pMethods = &kMethods;
    return code;
  }

  static File* Of(sqlite3_file* file) { return static_cast<File*>(file); }
  template <auto Method, typename... Arguments>
  static int Forward(sqlite3_file* file, Arguments... arguments) {
    sqlite3_file* real = Of(file)->Real();
    return (real->pMethods->*Method)(real, arguments...);
  }
  template <auto Method, typename... Arguments>
  static int ForwardChange(sqlite3_file* file, Arguments... arguments) {
    const int code = Of(file)->Vfs->Change();
    return code == SQLITE_OK ? Forward<Method>(file, arguments...) : code;
  }

  static int Flush(sqlite3_file* file, int) { return Of(file)->Vfs->Change(); }

  using Methods = sqlite3_io_methods;
  static inline const Methods kMethods{
      .iVersion = 1,
      .xClose = Forward<&Methods::xClose>,
      .xRead = Forward<&Methods::xRead>,
      .xWrite = ForwardChange<&Methods::xWrite>,
      .xTruncate = ForwardChange<&Methods::xTruncate>,
      .xSync = Flush,
      .xFileSize = Forward<&Methods::xFileSize>,
      .xLock = Forward<&Methods::xLock>,
      .xUnlock = Forward<&Methods::xUnlock>,
      .xCheckReservedLock = Forward<&Methods::xCheckReservedLock>,
      .xFileControl = Forward<&Methods::xFileControl>,
      .xSectorSize = Forward<&Methods::xSectorSize>,
      .xDeviceCharacteristics = Forward<&Methods::xDeviceCharacteristics>,
      .xShmMap = nullptr,
      .xShmLock = nullptr,
      .xShmBarrier = nullptr,
      .xShmUnmap = nullptr,
      .xFetch = nullptr,
      .xUnfetch = nullptr};

  sqlite3_vfs* real_;
  sqlite3_vfs vfs_;
  int to_come_ = 0;
  int code_ = SQLITE_OK;
  int failures_ = 0;
};

}  // namespace ostrel
