#pragma once

// Row writes of the store, each a durable commit of its own, or gathered into one while a command
// rewrites many lines (Database::ShareCommits).
//
// The engine may roll everything gathered back by itself: disk full, an I/O error, no memory. The
// operator has been told that those lines are written, so they are written again, one by one, each
// its own commit, before the failure that caused it is reported. What cannot be written even then is
// kept, and the next write or settling tries it first.

#include <cstdint>
#include <vector>

#include "platform/database/row_writer.h"
#include "platform/database/sqlite_connection.h"

namespace ostrel {

class SharedCommit {
 public:
  explicit SharedCommit(SqliteConnection& connection);
  ~SharedCommit();
  SharedCommit(const SharedCommit&) = delete;
  SharedCommit& operator=(const SharedCommit&) = delete;

  /// Carries the change out, gathered or on its own; a new row gets its id. After a failure the same
  /// change can be made again.
  ///   throws  Failure 3167 when the row to update is not there; what sqlite_failure.h
  ///           says. The change has not been made then.
  void Write(RowChange& change);

  void Share() { sharing_ = true; }
  void Settle();
  void EndSharing();

  /// Rises with everything that may change what a read gives: a write, a commit, a rollback.
  std::uint64_t Changes() const { return changes_; }
  /// Rises with what may change which lines a day and an employee have.
  std::uint64_t KeyChanges() const { return key_changes_; }

 private:
  void Commit();
  void Rescue();
  void RewriteLost();
  void CountChange(const RowChange& change);

  SqliteConnection& connection_;
  RowWriter writer_;
  bool sharing_ = false;
  bool rescuing_ = false;
  ChangeLog gathered_;           // since the open commit began
  std::vector<RowChange> lost_;  // rolled back, not written again yet
  std::uint64_t changes_ = 0;
  std::uint64_t key_changes_ = 0;
};

}  // namespace ostrel
