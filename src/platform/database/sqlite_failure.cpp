#include "platform/database/sqlite_failure.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

namespace ostrel {
namespace {

using namespace failure_number;

struct Meaning {
  int Code;
  std::optional<StoreStep> Step;  // nothing: at any step
  std::int32_t Number;
  const char* Words;
};

constexpr const char* kDiskFullWords = "There is not enough space on the disk.";
constexpr const char* kNotWritableWords = "The store or its folder is read-only.";
constexpr const char* kInUseWords =
    "The store is in use by another program; try again in a moment.";
constexpr const char* kNotOpenedWords = "The store's file cannot be opened.";
constexpr const char* kMovedWords =
    "The store's file has been moved or deleted while the program runs.";
constexpr const char* kBadQueryWords = "The store cannot make sense of the query.";

// The first row that fits counts. A locked store is told apart by the step because the report shows
// what could not be done: saving a line, or changing lines and indexes as a whole.
constexpr Meaning kMeanings[] = {
    {SQLITE_BUSY, StoreStep::Delete, kUpdateLocked, kInUseWords},
    {SQLITE_BUSY, StoreStep::Alter, kUpdateLocked, kInUseWords},
    {SQLITE_BUSY, {}, kLockedByUser, kInUseWords},
    {SQLITE_LOCKED, {}, kLockedByUser, kInUseWords},
    {SQLITE_FULL, StoreStep::Create, kDiskFull, kDiskFullWords},
    {SQLITE_FULL, {}, kStoreDiskFull, kDiskFullWords},
    {SQLITE_IOERR_NOMEM, {}, kOutOfMemory, "Out of memory."},
    {SQLITE_NOMEM, {}, kOutOfMemory, "Out of memory."},
    {SQLITE_IOERR, {}, kDiskOrNetwork, "The disk or the network answers with an error."},
    {SQLITE_CORRUPT, {}, kDamagedStore, "The store is damaged."},
    {SQLITE_NOTADB, {}, kForeignStore, "The file is not a store of this program."},
    {SQLITE_READONLY_DBMOVED, {}, kDatabaseNotFound, kMovedWords},
    {SQLITE_READONLY, StoreStep::Create, kPathAccess, kNotWritableWords},
    {SQLITE_READONLY, {}, kNotUpdatable, kNotWritableWords},
    {SQLITE_PERM, {}, kNotUpdatable, kNotWritableWords},
    // The file is there and open by now, so what cannot be opened is the journal in its folder.
    {SQLITE_CANTOPEN, StoreStep::Create, kPathAccess, kNotWritableWords},
    {SQLITE_CANTOPEN, StoreStep::Read, kDatabaseNotFound, kNotOpenedWords},
    {SQLITE_CANTOPEN, {}, kNotUpdatable, kNotWritableWords},
    {SQLITE_AUTH, {}, kQuerySyntax, kBadQueryWords},
    {SQLITE_ERROR, {}, kQuerySyntax, kBadQueryWords},
    {SQLITE_TOOBIG, {}, kQuerySyntax, kBadQueryWords},
};

constexpr int kPrimaryCode = 0xFF;

const Meaning* MeaningOf(int code, StoreStep step) {
  const auto* row = std::find_if(std::begin(kMeanings), std::end(kMeanings), [&](const Meaning& m) {
    return (m.Code == code || m.Code == (code & kPrimaryCode)) && m.Step.value_or(step) == step;
  });
  return row == std::end(kMeanings) ? nullptr : row;
}

}  // namespace

Failure StoreFailure(int code, StoreStep step, std::string_view message) {
  const std::string detail = " (" + std::string(message) + ")";
  if (message.starts_with("no such table"))
    return {kNoSuchTable, "There is no such table." + detail};
  const Meaning* meaning = MeaningOf(code, step);
  if (meaning == nullptr) return {kInternal, "The store failed." + detail};
  return {meaning->Number, meaning->Words + detail};
}

}  // namespace ostrel
