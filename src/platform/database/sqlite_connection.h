#pragma once

// One SQLite handle and its statements, owned and closed by themselves. Every error code becomes a
// Failure here, and nowhere else; whoever gathers writes hears of each error first, since the engine
// may have rolled a whole transaction back.

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/database/sqlite_failure.h"
#include "platform/values/value.h"

namespace ostrel {

class SqliteConnection;

/// A prepared statement. Columns count from 0, parameters from 1, as in SQLite.
class SqliteStatement {
 public:
  SqliteStatement(SqliteConnection& connection, std::string_view sql, StoreStep step);

  /// Texts are not copied: the value must live until the statement has run.
  void Bind(int parameter, const Value& value);
  void Bind(int parameter, std::int64_t number);
  void BindNull(int parameter);

  /// Whether there is a row to read. After the last one the statement is reset by itself.
  bool Step();
  /// Runs a statement that gives no rows.
  void Run();
  /// For whoever stops before the last row.
  void Reset() { sqlite3_reset(statement_.get()); }

  bool IsNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
  }
  std::int64_t Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
  double Real(int column) const { return sqlite3_column_double(statement_.get(), column); }
  std::string Text(int column) const;

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  void Check(int code);

  SqliteConnection& connection_;
  StoreStep step_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

class SqliteConnection {
 public:
  /// Opens an existing file to read and write, or to read alone where it cannot be written.
  ///   throws  Failure 3024 when it cannot be opened, 57 or another of files when it can only be
  ///           read now and that is no write protection
  explicit SqliteConnection(const std::string& path);
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  sqlite3* Handle() const { return handle_.get(); }
  bool ReadOnly() const { return sqlite3_db_readonly(handle_.get(), "main") != 0; }
  bool InTransaction() const { return sqlite3_get_autocommit(handle_.get()) == 0; }

  /// Bytes of the file from its start on, without any lock and without touching it; zeros where the
  /// file is shorter.
  std::string FirstBytes(std::size_t count) const;
  /// Whether the file has been deleted or replaced since it was opened.
  bool FileHasMoved() const;

  /// A prepared statement to read with, that is kept for the next one who asks for the same text. It
  /// may read the file's tables and do nothing else: SQLite itself refuses the rest (Failure 3075).
  SqliteStatement& ReadStatement(std::string_view sql);

  /// One statement without parameters, run at once.
  void Run(std::string_view sql, StoreStep step);

  /// While it lives a locked file is a failure at once, and is not waited for.
  class WithoutWaiting {
   public:
    explicit WithoutWaiting(const SqliteConnection& connection);
    ~WithoutWaiting();
    WithoutWaiting(const WithoutWaiting&) = delete;
    WithoutWaiting& operator=(const WithoutWaiting&) = delete;

   private:
    sqlite3* handle_;
  };

  /// Called after every error, before its failure is thrown. It must not throw.
  void OnError(std::function<void()> action) { on_error_ = std::move(action); }

  /// throws  always, the failure that the code stands for
  [[noreturn]] void Fail(int code, StoreStep step);

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  void Open(const std::string& path);
  void Harden();
  static int Authorize(void* connection, int action, const char* first, const char* second,
                       const char* database, const char* trigger);

  std::unique_ptr<sqlite3, Close> handle_;
  std::function<void()> on_error_;
  bool preparing_read_ = false;
  std::unordered_map<std::string, SqliteStatement, TextHash, std::equal_to<>> read_statements_;
};

}  // namespace ostrel
