#include "platform/database/store_file.h"

#include <cstdint>
#include <filesystem>
#include <future>
#include <utility>

#include "platform/database/index_check.h"
#include "platform/database/store_fields.h"
#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

// What tells a store of this program from every other SQLite file: "OsPr" in the header's field for
// the application that a file belongs to, and the version of the table's layout.
constexpr std::uint32_t kApplicationId = 0x4F735072;
constexpr std::uint32_t kLayoutVersion = 1;

constexpr std::size_t kHeaderSize = 100;
constexpr std::size_t kLayoutVersionPlace = 60;
constexpr std::size_t kApplicationIdPlace = 68;
constexpr std::string_view kSqliteMark{"SQLite format 3\0", 16};

std::uint32_t BigEndian(std::string_view header, std::size_t place) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    number = number << 8U | static_cast<unsigned char>(header[place + i]);
  }
  return number;
}

// SQLite opens what lies beside a store under these names and waits for a pipe's other end.
void RequirePlainFilesBeside(const std::string& path) {
  for (const char* ending : {"-journal", "-wal"}) RequirePlainFile(path + ending);
}

[[noreturn]] void RefuseForeign(const std::string& path) {
  throw Failure(failure_number::kForeignStore,
                "The file is not a timecard store of this program: " + path);
}

// Looked at before SQLite is asked anything, because SQLite takes an empty file for an empty
// database, and at its first question rolls back what a journal beside the file says.
void RequireStoreHeader(const SqliteConnection& connection, const std::string& path) {
  const std::string header = connection.FirstBytes(kHeaderSize);
  const bool ours = header.starts_with(kSqliteMark) &&
                    BigEndian(header, kApplicationIdPlace) == kApplicationId &&
                    BigEndian(header, kLayoutVersionPlace) == kLayoutVersion;
  if (!ours) RefuseForeign(path);
}

// A table that is not there or not as this program makes it.
void RequireLineTable(SqliteConnection& connection, const std::string& path) {
  SqliteStatement columns(connection,
                          "SELECT field.name, field.type FROM sqlite_schema AS entry, "
                          "pragma_table_info(entry.name) AS field "
                          "WHERE entry.type = 'table' AND entry.name = 'OstrelPr' "
                          "ORDER BY field.cid",
                          StoreStep::Read);
  const auto& fields = LineTable().Fields;
  std::size_t matching = 0;
  std::size_t count = 0;
  while (columns.Step()) {
    const bool matches = count < fields.size() && columns.Text(0) == fields[count].Name &&
                         columns.Text(1) == ColumnType(fields[count]);
    if (matches) ++matching;
    ++count;
  }
  if (matching != fields.size() || count != fields.size()) RefuseForeign(path);
}

[[noreturn]] void RefuseDamaged(const std::string& path, const std::string& finding) {
  throw Failure(failure_number::kDamagedStore,
                "The store is damaged: " + path + " (" + finding + ")");
}

// SQLite's quick check passes over what the index holds, and its full one takes longer than a start
// may take with 250,000 lines. So the index is looked at by ourselves, and at the same time.
void RequireSound(SqliteConnection& connection, const std::string& path, StoreCheck extent) {
  std::future<bool> index = std::async(std::launch::async, [&path, extent] {
    if (extent == StoreCheck::AllButIndex) return true;
    SqliteConnection own(path);
    return IndexHoldsEveryLine(own);
  });
  // Cut short at the first finding; one is enough to refuse the file.
  SqliteStatement check(connection, "PRAGMA quick_check(1)", StoreStep::Read);
  std::string finding;
  while (check.Step()) finding = check.Text(0);
  if (finding != "ok") RefuseDamaged(path, finding);
  if (index.get()) return;
  RefuseDamaged(path, "its index; hold Ctrl while the program starts, and it is made anew");
}

// A rollback journal keeps the store one file that can be copied; every commit reaches the disk.
void SetDurability(SqliteConnection& connection) {
  connection.Run("PRAGMA journal_mode = TRUNCATE", StoreStep::Read);
  connection.Run("PRAGMA synchronous = FULL", StoreStep::Read);
  connection.Run("PRAGMA temp_store = MEMORY", StoreStep::Read);
  connection.Run("PRAGMA cache_size = -32768", StoreStep::Read);
}

/// Takes a file away again unless it is to stay.
class FileInTheMaking {
 public:
  explicit FileInTheMaking(const std::string& path) : path_(path) {}
  ~FileInTheMaking() {
    std::error_code ignored;
    for (const std::string& file : {path_, path_ + "-journal"}) {
      if (!stays_) std::filesystem::remove(PathFromUtf8(file), ignored);
    }
  }
  FileInTheMaking(const FileInTheMaking&) = delete;
  FileInTheMaking& operator=(const FileInTheMaking&) = delete;

  void Keep() { stays_ = true; }

 private:
  std::string path_;
  bool stays_ = false;
};

void RequireRoomFor(const std::string& path) {
  std::error_code unknown;
  const std::filesystem::path folder = PathFromUtf8(path).parent_path();
  if (!folder.empty() && !std::filesystem::is_directory(folder, unknown)) {
    throw FileFailure(failure_number::kPathNotFound, path);
  }
  if (IsTaken(path)) throw FileFailure(failure_number::kFileExists, path);
}

void CreateEmptyFile(const std::string& path) {
  if (!OsFile::CreateNew(path, Readers::UserAlone)) {
    throw FileFailure(failure_number::kFileExists, path);
  }
}

void FillNewStore(const std::string& path) {
  SqliteConnection connection(path);
  SetDurability(connection);
  connection.Run("PRAGMA journal_mode = MEMORY",
                 StoreStep::Create);  // no file of its own beside it
  for (const std::string& sql :
       {std::string("BEGIN IMMEDIATE"), "PRAGMA application_id = " + std::to_string(kApplicationId),
        "PRAGMA user_version = " + std::to_string(kLayoutVersion), CreationSql(LineTable()),
        std::string("COMMIT")}) {
    connection.Run(sql, StoreStep::Create);
  }
}

}  // namespace

std::unique_ptr<SqliteConnection> OpenStoreFile(const std::string& path, StoreCheck check) {
  RequirePlainFilesBeside(path);
  auto connection = std::make_unique<SqliteConnection>(path);
  RequireStoreHeader(*connection, path);
  RequireLineTable(*connection, path);
  RequireSound(*connection, path, check);
  SetDurability(*connection);
  return connection;
}

// Made under another name: whoever is cut off in the midst of it leaves no store that cannot be opened.
std::unique_ptr<SqliteConnection> CreateStoreFile(const std::string& path) {
  RequireRoomFor(path);
  RequirePlainFilesBeside(path);
  const std::string making = path + ".new";
  { const FileInTheMaking leftOver(making); }
  CreateEmptyFile(making);
  FileInTheMaking file(making);
  FillNewStore(making);
  RenameDurably(making, path);
  file.Keep();
  auto connection = std::make_unique<SqliteConnection>(path);
  SetDurability(*connection);
  return connection;
}

}  // namespace ostrel
