#include "platform/database/sqlite_connection.h"

#include <utility>

#include "platform/files/os_file.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

constexpr int kBusyTimeoutMs = 500;
constexpr std::size_t kMostStatementsKept = 64;

/// Puts a flag back whichever way the work ends.
class FlagReset {
 public:
  explicit FlagReset(bool& flag) : flag_(flag) {}
  ~FlagReset() { flag_ = false; }
  FlagReset(const FlagReset&) = delete;
  FlagReset& operator=(const FlagReset&) = delete;

 private:
  bool& flag_;
};

}  // namespace

SqliteStatement::SqliteStatement(SqliteConnection& connection, std::string_view sql, StoreStep step)
    : connection_(connection), step_(step) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(connection.Handle(), sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  statement_.reset(statement);
  Check(code);
}

void SqliteStatement::Check(int code) {
  if (code != SQLITE_OK) connection_.Fail(code, step_);
}

void SqliteStatement::Bind(int parameter, const Value& value) {
  if (value.IsNull()) return BindNull(parameter);
  if (!value.IsText()) {
    return Check(sqlite3_bind_double(statement_.get(), parameter, value.NumberOrZero()));
  }
  const std::string& text = value.Characters();
  Check(sqlite3_bind_text64(statement_.get(), parameter, text.data(), text.size(), SQLITE_STATIC,
                            SQLITE_UTF8));
}

void SqliteStatement::Bind(int parameter, std::int64_t number) {
  Check(sqlite3_bind_int64(statement_.get(), parameter, number));
}

void SqliteStatement::BindNull(int parameter) {
  Check(sqlite3_bind_null(statement_.get(), parameter));
}

bool SqliteStatement::Step() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  const int reason = sqlite3_reset(statement_.get());
  if (code != SQLITE_DONE) connection_.Fail(reason == SQLITE_OK ? code : reason, step_);
  return false;
}

void SqliteStatement::Run() {
  while (Step()) {
  }
}

std::string SqliteStatement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  return {text == nullptr ? "" : text,
          static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

// SQLite takes any fault at opening for write protection and opens to read alone. The system is asked
// for the file's rights and the file itself left alone: to open and close it here would drop the locks
// that this process has on it.
SqliteConnection::SqliteConnection(const std::string& path) {
  Open(path);
  if (ReadOnly() && MayWrite(path)) {
    Open(path);
    if (ReadOnly()) throw FileFailure(failure_number::kDeviceIo, path);
  }
  sqlite3_extended_result_codes(handle_.get(), 1);
  sqlite3_busy_timeout(handle_.get(), kBusyTimeoutMs);
  Harden();
}

void SqliteConnection::Open(const std::string& path) {
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(
      path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE,
      nullptr);
  handle_.reset(handle);
  if (code != SQLITE_OK) Fail(code, StoreStep::Read);
}

// Nothing that stands in a file may act by itself.
void SqliteConnection::Harden() {
  sqlite3_set_authorizer(handle_.get(), Authorize, this);
  for (const int option :
       {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_TRUSTED_SCHEMA,
        SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL}) {
    sqlite3_db_config(handle_.get(), option, 0, nullptr);
  }
  sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
}

// What is read comes from the dialect's reader, which lets no other statement through. This is the
// wall behind that one. It stays in place, since a change of it would expire every statement.
int SqliteConnection::Authorize(void* connection, int action, const char* first, const char* second,
                                const char*, const char*) {
  if (!static_cast<const SqliteConnection*>(connection)->preparing_read_) return SQLITE_OK;
  const std::string_view function = action == SQLITE_FUNCTION ? second : "";
  const bool allowed = action == SQLITE_SELECT ||
                       (action == SQLITE_READ && !std::string_view(first).starts_with("sqlite_")) ||
                       function == "sum" || function == "max" || function == "count";
  return allowed ? SQLITE_OK : SQLITE_DENY;
}

std::string SqliteConnection::FirstBytes(std::size_t count) const {
  std::string bytes(count, '\0');
  sqlite3_file* file = nullptr;
  sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
  if (file != nullptr && file->pMethods != nullptr) {
    file->pMethods->xRead(file, bytes.data(), static_cast<int>(count), 0);
  }
  return bytes;
}

bool SqliteConnection::FileHasMoved() const {
  int moved = 0;
  sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

SqliteConnection::WithoutWaiting::WithoutWaiting(const SqliteConnection& connection)
    : handle_(connection.Handle()) {
  sqlite3_busy_timeout(handle_, 0);
}

SqliteConnection::WithoutWaiting::~WithoutWaiting() {
  sqlite3_busy_timeout(handle_, kBusyTimeoutMs);
}

SqliteStatement& SqliteConnection::ReadStatement(std::string_view sql) {
  const auto kept = read_statements_.find(sql);
  if (kept != read_statements_.end()) {
    kept->second.Reset();
    return kept->second;
  }
  if (read_statements_.size() >= kMostStatementsKept) read_statements_.clear();
  preparing_read_ = true;
  const FlagReset done(preparing_read_);
  return read_statements_.try_emplace(std::string(sql), *this, sql, StoreStep::Read).first->second;
}

void SqliteConnection::Run(std::string_view sql, StoreStep step) {
  SqliteStatement(*this, sql, step).Run();
}

void SqliteConnection::Fail(int code, StoreStep step) {
  const char* message = handle_ ? sqlite3_errmsg(handle_.get()) : sqlite3_errstr(code);
  Failure failure = StoreFailure(code, step, message);
  if (on_error_) on_error_();
  throw Failure(std::move(failure));
}

}  // namespace ostrel
