#pragma once

#include <sqlite3.h>

namespace ostrel {

/// While it lives, waiting for a lock takes no time in stores that are opened and closed meanwhile.
class NoWaiting {
 public:
  NoWaiting() : real_(sqlite3_vfs_find(nullptr)), vfs_(*real_) {
    vfs_.zName = "no waiting";
    vfs_.xSleep = [](sqlite3_vfs*, int microseconds) { return microseconds; };
    sqlite3_vfs_register(&vfs_, 1);
  }
  ~NoWaiting() {
    sqlite3_vfs_register(real_, 1);
    sqlite3_vfs_unregister(&vfs_);
  }
  NoWaiting(const NoWaiting&) = delete;
  NoWaiting& operator=(const NoWaiting&) = delete;

 private:
  sqlite3_vfs* real_;
  sqlite3_vfs vfs_;
};

}  // namespace ostrel
