#pragma once

// Databases: a store (one SQLite file with one table; open_stores.h opens them) and the folder of the
// office's dBase tables (table_folder.h). Both answer to the same class, since the lookups put the
// same kind of question to either.
//
// The SQL that comes in here is the program's own small dialect; sql_dialect.h says which forms are
// let through. Failures carry the numbers of platform/values/failure.h.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/database/recordset.h"
#include "platform/database/table_definition.h"

namespace ostrel {

class DatabaseBody;

class Database {
 public:
  Database() = default;  ///< never opened; every call on it is Failure 91
  explicit Database(std::shared_ptr<DatabaseBody> body) : body_(std::move(body)) {}
  /// Opens itself when it is first needed: a call that cannot open it throws what `open` throws, and
  /// the next call tries again.
  explicit Database(std::function<Database()> open) : open_(std::move(open)) {}
  /// Whether it is open now.
  explicit operator bool() const { return body_ != nullptr; }

  /// Opens it now, where it is not open yet.
  void Open() const { Body(); }

  /// A table's name or a query. With no type the engine chooses.
  ///   throws  Failure 3078 for an unknown table, 3061 for an unknown field, 3075 for bad SQL
  Recordset OpenRecordset(std::string_view text, RecordsetType type = RecordsetType::Default) const;

  /// Rows of a store that are known by their bookmarks, in the order given.
  ///   throws  Failure 3251 in a folder of tables
  Recordset OpenRows(const std::vector<Bookmark>& rows) const;

  /// An action statement without a result, in one durable commit.
  void Execute(std::string_view sql) const;

  /// Puts a table into a store.
  ///   table   a store has one, from the first moment on: to append that one changes nothing
  ///   throws  Failure 3251 in a folder of tables; what the store's file says to any other table
  void AppendTable(const TableDefinition& table) const;
  /// throws  Failure 3265 when there is no such index
  void DeleteIndex(std::string_view table, std::string_view index) const;

  /// Makes durable what is gathered and what could not be written before (Gathering), and gives the
  /// file back.
  ///   throws  the failure of rows that could not be written, which stay known
  void Settle() const;

  void Close();

  /// Expires as soon as the store is not held any more (Gathering, Look); empty while nobody holds
  /// it. What has been read meanwhile is true until then, but for what this program writes itself.
  std::weak_ptr<const void> Hold() const;

 private:
  friend class Gathering;
  friend class Look;
  DatabaseBody& Body() const;
  mutable std::shared_ptr<DatabaseBody> body_;
  std::function<Database()> open_;
};

// A command that looks at many rows of a store, or changes many, holds the store for as long as one of
// these objects lives. The file is taken by the first read or write and given back when a box is about
// to be shown (SettleAllShared), to be taken again by the next; while it is held no other program
// changes a row, so each row is read once. Outside, every read asks the file and every write is a
// durable commit of its own. On a folder of tables they do nothing.

/// Row writes of a command, gathered into one durable commit.
///
/// The engine may roll back by itself what has been gathered (disk full, an I/O error), and a commit
/// may find the file locked. The operator has been told that those rows are written: they are written
/// again at once where that is possible, and else stay known to the store, which tries them before
/// its next write and when it is closed.
class Gathering {
 public:
  /// throws  why a database that opens itself cannot be opened; Failure 91
  explicit Gathering(const Database& database);
  /// Settles what has not been settled. When this returns, nothing is gathered and no lock is held,
  /// whatever has failed.
  ~Gathering();
  Gathering(const Gathering&) = delete;
  Gathering& operator=(const Gathering&) = delete;

  /// Makes everything gathered durable, and goes on gathering.
  ///   throws  the failure of rows that could not be written; no lock is held then, the rows stay
  ///           known, and the call can be made again
  void Settle() const;

 private:
  std::shared_ptr<DatabaseBody> body_;
};

/// One state of the store for a walk over its rows. A row that is written meanwhile, with nothing
/// gathering, ends that state and begins another.
class Look {
 public:
  explicit Look(const Database& database);  ///< one that is not open is not opened by this
  ~Look();
  Look(const Look&) = delete;
  Look& operator=(const Look&) = delete;

 private:
  std::shared_ptr<DatabaseBody> body_;
};

}  // namespace ostrel
