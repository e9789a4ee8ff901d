#pragma once

// Databases: the timecard store (one SQLite file) and the folder of the office's dBase tables.
// Both answer to the same class, since the lookups put the same kind of question to either.
//
// The SQL that comes in here is the program's own small dialect; sql_dialect.h says which forms are
// let through. Failures carry the numbers of platform/values/failure.h.

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/database/recordset.h"

namespace ostrel {

/// Types of the store's fields; the numbers are the system's own.
enum class FieldType : std::int16_t { Single = 6, Double = 7, Date = 8, Text = 10 };

struct FieldDefinition {
  std::string Name;
  FieldType Type = FieldType::Double;
  int Size = 0;  ///< characters, Text only
};

struct TableDefinition {
  std::string Name;
  std::vector<FieldDefinition> Fields;
};

/// A line that no file holds: some of a line's fields by name, the others Null.
using DerivedLine = std::vector<std::pair<std::string, Value>>;

class DatabaseBody;

class Database {
 public:
  Database() = default;  ///< never opened; every call on it is Failure 91
  explicit Database(std::shared_ptr<DatabaseBody> body) : body_(std::move(body)) {}
  explicit operator bool() const { return body_ != nullptr; }

  /// A table's name or a query. With no type the engine chooses.
  ///   throws  Failure 3078 for an unknown table, 3061 for an unknown field, 3075 for bad SQL
  Recordset OpenRecordset(std::string_view text, RecordsetType type = RecordsetType::Default) const;

  /// An action statement without a result, in one durable commit.
  void Execute(std::string_view sql) const;

  void AppendTable(const TableDefinition& table) const;
  /// throws  Failure 3265 when there is no such index
  void DeleteIndex(std::string_view table, std::string_view index) const;

  void Close();

  /// Lists and aggregates of a store see these lines among its own until they are hidden again; rows
  /// never do, and nothing of them reaches the file.
  ///   throws  Failure 3265 for an unknown field, and what Field::operator= throws
  void ShowDerivedLines(const std::vector<DerivedLine>& lines) const;
  void HideDerivedLines() const;

  // A command that rewrites many lines shares one durable commit.

  /// From here on row writes are gathered until CommitShared; the first write opens the commit.
  /// Does nothing on a database that is not a store, or when commits are shared already.
  void ShareCommits() const;

  /// Makes everything gathered durable and goes on gathering. Call it before a box is shown.
  /// If the engine rolls the gathered writes back by itself (disk full, I/O error), they are
  /// written again one by one; those that still cannot be written stay gathered and the failure is
  /// thrown, so the call can be made again.
  void SettleShared() const;

  /// SettleShared, and every later write is a commit of its own again, also when this throws: a line
  /// saved after the command must never wait for a commit that nobody makes. After a throw the call
  /// can be made again; the next write tries what is still gathered first.
  void CommitShared() const;

 private:
  DatabaseBody& Body() const;
  std::shared_ptr<DatabaseBody> body_;
};

/// Makes a new store: an empty SQLite file that says it is ours. `locale` is the sort order text of
/// the system, of which the store keeps nothing.
///   throws  Failure 58 when the file exists (it is left alone), 75/76/61 by the folder's fault
Database CreateDatabase(const std::string& path, std::string_view locale);

/// What opening a store looks through.
enum class StoreCheck { Whole, AllButIndex };

/// Opens a store to read and write, or to read alone where the file cannot be written. Never
/// creates one. Several open objects on one file may live at once and see each other's rows.
///   check   an index that is about to be made anew may be damaged
///   throws  Failure 3024 not there, 3343 not a store of this program, 3049 damaged (found by a
///           check of the whole file), 3260 locked by another program; the file is left as it was
Database OpenDatabase(const std::string& path, StoreCheck check = StoreCheck::Whole);

/// Opens the folder whose .dbf files are the tables. No file is kept open; each query and each
/// OpenRecordset reads the file as it is then.
Database OpenTableFolder(const std::string& folder, bool exclusive, bool readOnly,
                         std::string_view connect);

/// SettleShared on every open store of this process.
void SettleAllShared();

}  // namespace ostrel
