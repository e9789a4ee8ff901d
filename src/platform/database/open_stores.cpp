#include "platform/database/open_stores.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "platform/database/store.h"
#include "platform/database/store_file.h"
#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

/// Never destroyed: a store may be closed when statics go.
std::vector<std::weak_ptr<Store>>& OpenStores() {
  static auto& stores = *new std::vector<std::weak_ptr<Store>>;
  return stores;
}

std::shared_ptr<Store> Enter(std::string path, const StoreFormat& format,
                             std::unique_ptr<SqliteConnection> connection) {
  auto& stores = OpenStores();
  std::erase_if(stores, [](const std::weak_ptr<Store>& store) { return store.expired(); });
  auto store = std::make_shared<Store>(std::move(path), format, std::move(connection));
  stores.push_back(store);
  return store;
}

/// A store whose file has been deleted or replaced does not count: the name stands for another file.
std::shared_ptr<Store> FindOpen(const std::string& path) {
  for (const std::weak_ptr<Store>& each : OpenStores()) {
    auto store = each.lock();
    if (store && IsSameFile(store->Path(), path) && !store->FileHasMoved()) return store;
  }
  return {};
}

/// The path as the folder spells it, with links followed, so that one file has one name.
///   throws  Failure 3024 when it is no plain file's
std::string NameOfExistingFile(const std::string& path) {
  std::error_code missing;
  std::filesystem::path file = PathFromUtf8(path);
  if (!std::filesystem::exists(file, missing)) file = PathFromUtf8(ExistingPath(path));
  file = std::filesystem::canonical(file, missing);
  if (missing || !std::filesystem::is_regular_file(file, missing)) {
    throw Failure(failure_number::kDatabaseNotFound,
                  IsTaken(path) ? "The store's name stands for no file that is there: " + path
                                : "Could not find the store: " + path);
  }
  return Utf8FromPath(file);
}

}  // namespace

Database OpenDatabase(const std::string& path, const StoreFormat& format, StoreCheck check) {
  const std::string file = NameOfExistingFile(path);
  if (auto store = FindOpen(file)) return Database(std::move(store));
  const bool withIndex = check == StoreCheck::Whole;
  return Database(Enter(file, format, OpenStoreFile(file, format, withIndex)));
}

Database CreateDatabase(const std::string& path, const StoreFormat& format) {
  auto connection = CreateStoreFile(path, format);
  return Database(Enter(NameOfExistingFile(path), format, std::move(connection)));
}

void SettleAllShared() {
  std::optional<Failure> reason;
  for (const std::weak_ptr<Store>& each : OpenStores()) {
    try {
      if (const auto store = each.lock()) store->SettleForBox();
    } catch (const Failure& failure) {
      reason = failure;
    }
  }
  if (reason) throw Failure(*reason);
}

std::size_t RowsStillLost() {
  std::size_t rows = 0;
  for (const std::weak_ptr<Store>& each : OpenStores()) {
    if (const auto store = each.lock()) rows += store->RowsStillLost();
  }
  return rows;
}

}  // namespace ostrel
