#pragma once

// Stands between the whole process, SQLite and libzip included, and the system's files: sees each
// call that changes a file below a folder before it is made, and may refuse it, cut it short, or end
// the process there. Nothing is ever really flushed, so that thousands of runs are quick.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace ostrel {

enum class DiskOp { Read, Open, Create, Write, Cut, Flush, FlushFolder, Rename, Remove, NewFolder };

struct DiskCall {
  DiskOp What;
  std::string Path;  ///< as the system names it now
  std::string To = {};
  std::int64_t At = 0;          ///< of a write; the new size of a cut
  std::string_view Bytes = {};  ///< may be shortened before the call, at least to one byte
  std::int64_t Size = 0;        ///< of the file before the call
};

class DiskWatcher {
 public:
  explicit DiskWatcher(const std::string& folder);
  ~DiskWatcher();
  DiskWatcher(const DiskWatcher&) = delete;
  DiskWatcher& operator=(const DiskWatcher&) = delete;

  const std::string Folder;
  /// Gives the code of errno to fail with, or 0.
  std::function<int(DiskCall&)> Before = [](DiskCall&) { return 0; };
  std::function<void(const DiskCall&)> After = [](const DiskCall&) {};
};

}  // namespace ostrel
