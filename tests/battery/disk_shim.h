#pragma once

// Stands between the whole process, SQLite and libzip included, and the system's files: sees each
// call that changes a file below a folder before it is made, and may refuse it, cut it short, or end
// the process there. Nothing is ever really flushed, so that thousands of runs are quick.

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrel {

enum class DiskCallKind {
  Read,
  Open,
  Create,
  Write,
  Cut,
  Flush,
  FlushFolder,
  Rename,
  Remove,
  MakeFolder
};

struct DiskCall {
  DiskCallKind What;
  std::string Path;  ///< as the system names it now
  std::string To = {};
  std::int64_t At = 0;          ///< of a write; the new size of a cut
  std::string_view Bytes = {};  ///< may be shortened before the call, at least to one byte
  std::int64_t Size = 0;        ///< of the file before the call
};

class DiskWatcher {
 public:
  explicit DiskWatcher(const std::string& folder);
  virtual ~DiskWatcher();
  DiskWatcher(const DiskWatcher&) = delete;
  DiskWatcher& operator=(const DiskWatcher&) = delete;

  /// The code of errno to fail with, or 0.
  virtual int Before(DiskCall&) { return 0; }
  virtual void After(const DiskCall&) {}

  const std::string Folder;
};

}  // namespace ostrel
