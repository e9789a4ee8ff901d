#include "platform/database/shared_commit.h"

#include <optional>
#include <utility>

#include "platform/database/store_fields.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

constexpr std::uint32_t kKeyFields = 1U << kEmplNumbField | 1U << kEtimeField;

}  // namespace

SharedCommit::SharedCommit(SqliteConnection& connection)
    : connection_(connection), writer_(connection) {
  connection_.OnError([this] { Rescue(); });
}

SharedCommit::~SharedCommit() {
  try {
    Settle();
  } catch (const Failure&) {
    // The last user of the store is gone, and with it whoever could be told.
  }
  connection_.OnError({});
}

void SharedCommit::CountChange(const RowChange& change) {
  ++changes_;
  if (change.What != RowChange::Kind::Update || (change.Fields & kKeyFields) != 0) ++key_changes_;
}

void SharedCommit::Write(RowChange& change) {
  RewriteLost();
  if (sharing_ && !connection_.InTransaction()) {
    connection_.Run("BEGIN IMMEDIATE", StoreStep::Write);
  }
  CountChange(change);
  if (!writer_.Write(change)) {
    throw Failure(failure_number::kDeletedRecord, "Record is deleted.");
  }
  if (sharing_) gathered_.Add(change);
}

void SharedCommit::Settle() {
  RewriteLost();
  if (connection_.InTransaction()) Commit();
  gathered_.Clear();
}

void SharedCommit::EndSharing() {
  Settle();
  sharing_ = false;
}

// A commit that the engine answered with a rollback has still done its work when every row could be
// written again.
void SharedCommit::Commit() {
  ++changes_;
  try {
    connection_.Run("COMMIT", StoreStep::Write);
  } catch (const Failure&) {
    if (connection_.InTransaction() || !lost_.empty()) throw;
  }
}

// A commit may also fail when it has already reached the file, and what it held is there. Making
// the changes again does no harm then.
void SharedCommit::Rescue() {
  if (rescuing_ || gathered_.Empty() || connection_.InTransaction()) return;
  ++changes_;
  ++key_changes_;
  lost_ = gathered_.Take();
  try {
    RewriteLost();
  } catch (const Failure&) {
    // Whoever met the error reports it; the rows left over are tried again by the next write.
  }
}

// A full disk still takes changes that need no new room, so one refused row does not keep the others
// back. Any other fault would meet each of them.
void SharedCommit::RewriteLost() {
  if (lost_.empty()) return;
  rescuing_ = true;
  std::vector<RowChange> left;
  std::optional<Failure> reason;
  for (RowChange& change : lost_) {
    if (!reason || reason->Number == failure_number::kStoreDiskFull) {
      try {
        CountChange(change);
        writer_.Write(change);
        continue;
      } catch (const Failure& failure) {
        reason = failure;
      }
    }
    left.push_back(std::move(change));
  }
  rescuing_ = false;
  lost_ = std::move(left);
  if (reason) throw Failure(*reason);
}

}  // namespace ostrel
