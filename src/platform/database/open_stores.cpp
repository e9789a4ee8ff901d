// OpenDatabase, CreateDatabase and SettleAllShared: the stores that are open in this process, by
// file. The second Database on a file gets the store of the first.

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "platform/database/database.h"
#include "platform/database/store.h"
#include "platform/database/store_file.h"
#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/values/failure.h"

namespace ostrel {
namespace {

std::vector<std::weak_ptr<Store>>& OpenStores() {
  static std::vector<std::weak_ptr<Store>> stores;
  return stores;
}

std::shared_ptr<Store> Enter(std::string path, std::unique_ptr<SqliteConnection> connection) {
  auto& stores = OpenStores();
  std::erase_if(stores, [](const std::weak_ptr<Store>& store) { return store.expired(); });
  auto store = std::make_shared<Store>(std::move(path), std::move(connection));
  stores.push_back(store);
  return store;
}

/// A store whose file has been deleted or replaced does not count: the name stands for another file.
std::shared_ptr<Store> FindOpen(const std::string& path) {
  for (const std::weak_ptr<Store>& each : OpenStores()) {
    auto store = each.lock();
    if (store && IsSameFile(store->Path(), path) && !store->Connection().FileHasMoved())
      return store;
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

Database OpenDatabase(const std::string& path, StoreCheck check) {
  const std::string file = NameOfExistingFile(path);
  if (auto store = FindOpen(file)) return Database(std::move(store));
  return Database(Enter(file, OpenStoreFile(file, check)));
}

Database CreateDatabase(const std::string& path, std::string_view) {
  auto connection = CreateStoreFile(path);
  return Database(Enter(NameOfExistingFile(path), std::move(connection)));
}

void SettleAllShared() {
  for (const std::weak_ptr<Store>& each : OpenStores()) {
    if (const auto store = each.lock()) store->SettleShared();
  }
}

}  // namespace ostrel
