#pragma once

// Reads and writes of a store's rows, and who holds the file meanwhile. Outside the scopes of
// database.h (Gathering, Look) every read asks the file, and every write is a durable commit of its
// own. Within one the first read or write takes the file, and nobody else changes a row until it is
// given back; so what has been read is kept for as long, and forgotten with it.
//
// The engine may roll everything gathered back by itself: disk full, an I/O error, no memory. Or the
// commit meets somebody who is reading. The operator has been told that those lines are written, so
// they are written again before the failure is reported, one by one where there is no room for all.
// What cannot be written even then is lost for now: it stays known, and the next write or settling
// tries it first.

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/database/row_writer.h"
#include "platform/database/sqlite_connection.h"

namespace ostrel {

class Transactions {
 public:
  Transactions(SqliteConnection& connection, const TableDefinition& table);
  ~Transactions();
  Transactions(const Transactions&) = delete;
  Transactions& operator=(const Transactions&) = delete;

  void BeginGathering();
  void EndGathering() noexcept;
  void BeginLook() { ++looks_; }
  void EndLook() noexcept;

  /// Takes the file where a scope wants it and it is not held yet. Before every read.
  ///   throws  Failure 3260 when another program does not let it go
  void Hold();
  std::weak_ptr<const void> Held() const { return held_; }

  /// Makes durable what is gathered, with what was lost before, and gives the file back. Either way
  /// no lock is left behind.
  ///   throws  the failure of what stays lost
  void Settle();

  /// The same before a box is shown. What was lost before the scopes that are open now is no matter of
  /// theirs: the operator has been told.
  void SettleForBox();

  /// A row as it is now; none when it is not there.
  RowFields Read(Bookmark row);
  /// The same without taking the file or waiting for it.
  ///   throws  Failure 3260 at once when another program holds it
  RowFields ReadWithoutWaiting(Bookmark row);

  /// Carries the change out, gathered or on its own; a new row gets its id. After a failure the same
  /// change can be made again.
  ///   after   the row as it is behind the change; none for a delete
  ///   throws  Failure 3167 when the row is not there, except to be deleted; 3197 when it is not the
  ///           one that the change was made from; what sqlite_failure.h says. The change has not
  ///           been made then.
  void Write(RowChange& change, RowFields after);

  /// Rows as the screen last had them, for as long as this program has not written them otherwise.
  RowFields Shown(Bookmark row) const;
  void Show(Bookmark row, RowFields fields);

  std::size_t RowsStillLost() const { return lost_.size(); }

 private:
  struct Memory {
    std::unordered_map<Bookmark, RowFields> Rows;
  };
  RowFields ReadFromFile(Bookmark row);
  void Check(const RowChange& change, const RowFields& now) const;
  void WriteAlone(RowChange& change);
  void Release();
  void RollBack();
  void LoseGathered();
  void Rescue();
  void WriteLost();
  void WriteLostTogether();
  void WriteLostOneByOne();
  void WriteAgain(RowChange& change);
  void ShowRewritten();

  SqliteConnection& connection_;
  const TableDefinition& table_;
  RowWriter writer_;
  std::unique_ptr<SqliteStatement> row_reader_;
  int gatherings_ = 0, looks_ = 0;  // scopes that are open
  std::shared_ptr<Memory> held_;    // what has been read since the file was taken
  ChangeLog gathered_;              // since then
  std::vector<RowChange> lost_;     // rolled back, not written again yet
  struct Rewritten {
    RowFields Was, Is;
  };
  std::unordered_map<Bookmark, Rewritten> rewritten_;  // rows that were lost, by the last WriteLost
  // The older half is dropped when the newer one has grown.
  std::unordered_map<Bookmark, RowFields> shown_, shown_before_;
};

}  // namespace ostrel
