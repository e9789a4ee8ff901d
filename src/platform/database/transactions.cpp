#include "platform/database/transactions.h"

#include <exception>
#include <optional>
#include <utility>

#include "platform/database/field_values.h"
#include "platform/database/refusals.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

constexpr std::size_t kMostRowsKept = 20000;
constexpr std::size_t kMostRowsShown = 1000;  // more than any screen has

}  // namespace

Transactions::Transactions(SqliteConnection& connection, const TableDefinition& table)
    : connection_(connection), table_(table), writer_(connection, table) {
  connection_.OnError([this] { Rescue(); });
}

Transactions::~Transactions() {
  try {
    Settle();
  } catch (const std::exception&) {
    // The last user of the store is gone, and with it whoever could be told.
  }
  connection_.OnError({});
}

// A look that holds the file to read cannot go on to write: it would have to let others pass first.
void Transactions::BeginGathering() {
  if (gatherings_ == 0) Release();
  ++gatherings_;
}

void Transactions::EndGathering() noexcept {
  if (--gatherings_ > 0 || !connection_.InTransaction()) return;
  try {
    Settle();
  } catch (const std::exception&) {
    // What was gathered is known as lost. The command that gathered has settled before, and told.
  }
}

void Transactions::EndLook() noexcept {
  if (--looks_ == 0 && gatherings_ == 0) Release();
}

// To gather is to write sooner or later, and the right to write is asked for at once: one who reads
// first may find that another reader wants to write too, and then neither can.
void Transactions::Hold() {
  if (connection_.InTransaction() || (gatherings_ == 0 && looks_ == 0)) return;
  const bool writes = gatherings_ > 0 && !connection_.ReadOnly();
  if (writes) WriteLost();
  connection_.Run(writes ? "BEGIN IMMEDIATE" : "BEGIN",
                  writes ? StoreStep::Write : StoreStep::Read);
  held_ = std::make_shared<Memory>();
}

void Transactions::RollBack() {
  held_.reset();
  if (!connection_.InTransaction()) return;
  try {
    connection_.Run("ROLLBACK", StoreStep::Write);
  } catch (const Failure&) {
    // SQLite has given the file back all the same.
  }
}

void Transactions::LoseGathered() {
  for (RowChange& change : gathered_.Take()) lost_.push_back(std::move(change));
}

/// Ends a look.
void Transactions::Release() {
  if (gathered_.Empty()) RollBack();
}

// A commit that the engine answered with a rollback has still done its work when every row could be
// written again. One that met another program is undone: while the operator thinks about it, neither
// it nor anybody else must be kept from the file.
void Transactions::Settle() {
  held_.reset();
  if (connection_.InTransaction()) {
    try {
      connection_.Run("COMMIT", StoreStep::Write);
      gathered_.Clear();
    } catch (const Failure&) {
      if (connection_.InTransaction()) LoseGathered();
      RollBack();
      if (!lost_.empty()) throw;
    }
  }
  WriteLost();
}

void Transactions::SettleForBox() { gatherings_ > 0 ? Settle() : Release(); }

RowFields Transactions::ReadFromFile(Bookmark row) {
  if (!row_reader_) {
    row_reader_ = std::make_unique<SqliteStatement>(
        connection_, "SELECT * FROM " + table_.Name + " WHERE rowid = ?1", StoreStep::Read);
  }
  row_reader_->Bind(1, row);
  if (!row_reader_->Step()) return {};
  const auto& definitions = table_.Fields;
  std::vector<Value> fields(definitions.size());
  for (std::size_t i = 0; i < definitions.size(); ++i) {
    fields[i] = ColumnValue(*row_reader_, static_cast<int>(i), definitions[i].Type);
  }
  row_reader_->Reset();
  return std::make_shared<const std::vector<Value>>(std::move(fields));
}

RowFields Transactions::Read(Bookmark row) {
  Hold();
  if (!held_) return ReadFromFile(row);
  const auto known = held_->Rows.find(row);
  if (known != held_->Rows.end()) return known->second;
  RowFields fields = ReadFromFile(row);
  if (held_->Rows.size() >= kMostRowsKept) held_->Rows.clear();
  held_->Rows.emplace(row, fields);
  return fields;
}

RowFields Transactions::ReadWithoutWaiting(Bookmark row) {
  const SqliteConnection::WithoutWaiting atOnce(connection_);
  return ReadFromFile(row);
}

void Transactions::Check(const RowChange& change, const RowFields& now) const {
  if (!now) {
    if (change.What == RowChange::Kind::Update) RefuseDeletedRow();
    return;
  }
  if (now != change.Before && !IsMeantFor(change, *now)) RefuseChangedRow();
}

// One commit in which nobody comes between the look at the row and its change.
void Transactions::WriteAlone(RowChange& change) {
  const StoreStep step =
      change.What == RowChange::Kind::Delete ? StoreStep::Delete : StoreStep::Write;
  connection_.Run("BEGIN IMMEDIATE", step);
  try {
    Check(change, ReadFromFile(change.Row));
    writer_.Write(change);
    connection_.Run("COMMIT", step);
  } catch (const Failure&) {
    RollBack();
    throw;
  }
}

void Transactions::Write(RowChange& change, RowFields after) {
  const bool isNew = change.What == RowChange::Kind::Insert;
  if (gatherings_ > 0) {
    Hold();
    if (!isNew) Check(change, Read(change.Row));
    writer_.Write(change);
    held_->Rows[change.Row] = after;
    gathered_.Add(change);
  } else {
    Release();
    WriteLost();
    // What was lost may have been of this very row; whoever made the change has not seen it come.
    const auto again = rewritten_.find(change.Row);
    if (again != rewritten_.end() && change.Before && *change.Before == *again->second.Was) {
      change.Before = again->second.Is;
    }
    isNew ? writer_.Write(change) : WriteAlone(change);
  }
  if (Shown(change.Row)) Show(change.Row, std::move(after));
}

// A commit may also fail when it has already reached the file, and what it held is there. Making
// the changes again does no harm then.
void Transactions::Rescue() {
  if (connection_.InTransaction()) return;
  held_.reset();
  if (gathered_.Empty()) return;
  LoseGathered();
  try {
    WriteLost();
  } catch (const Failure&) {
    // Whoever met the error reports it; the rows left over are tried again by the next write.
  }
}

// A full disk still takes changes that need no new room, so one refused row does not keep the others
// back. Any other fault would meet each of them.
void Transactions::WriteLost() {
  rewritten_.clear();
  if (lost_.empty()) return;
  try {
    WriteLostTogether();
  } catch (const Failure& failure) {
    RollBack();
    rewritten_.clear();
    if (failure.Number != failure_number::kStoreDiskFull) throw;
    WriteLostOneByOne();
  }
}

void Transactions::WriteLostTogether() {
  connection_.Run("BEGIN IMMEDIATE", StoreStep::Write);
  for (RowChange& change : lost_) WriteAgain(change);
  connection_.Run("COMMIT", StoreStep::Write);
  lost_.clear();
  ShowRewritten();
}

void Transactions::WriteLostOneByOne() {
  std::vector<RowChange> left;
  std::optional<Failure> reason;
  for (RowChange& change : lost_) {
    if (!reason || reason->Number == failure_number::kStoreDiskFull) {
      try {
        WriteAgain(change);
        continue;
      } catch (const Failure& failure) {
        reason = failure;
      }
    }
    left.push_back(std::move(change));
  }
  lost_ = std::move(left);
  ShowRewritten();
  if (reason) throw Failure(*reason);
}

// Another program may have changed the row since, or given its number to another: what it wrote later
// counts.
void Transactions::WriteAgain(RowChange& change) {
  if (change.What == RowChange::Kind::Insert) {
    writer_.Write(change);
    return;
  }
  const RowFields now = ReadFromFile(change.Row);
  if (!now || !IsMeantFor(change, *now)) return;
  writer_.Write(change);
  if (const RowFields after = ReadFromFile(change.Row)) rewritten_[change.Row] = {now, after};
}

// A row that this program writes late is no row that another one has changed.
void Transactions::ShowRewritten() {
  for (const auto& [row, fields] : rewritten_) {
    const RowFields shown = Shown(row);
    if (shown && *shown == *fields.Was) Show(row, fields.Is);
  }
}

RowFields Transactions::Shown(Bookmark row) const {
  for (const auto* rows : {&shown_, &shown_before_}) {
    const auto known = rows->find(row);
    if (known != rows->end()) return known->second;
  }
  return {};
}

void Transactions::Show(Bookmark row, RowFields fields) {
  if (shown_.size() >= kMostRowsShown) shown_before_ = std::exchange(shown_, {});
  shown_[row] = std::move(fields);
}

}  // namespace ostrel
