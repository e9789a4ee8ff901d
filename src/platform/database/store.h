#pragma once

// A store: one SQLite file with one table, whose format its opener brings along (open_stores.h).

#include <memory>
#include <string>
#include <vector>

#include "platform/database/database_body.h"
#include "platform/database/sql_dialect.h"
#include "platform/database/sqlite_connection.h"
#include "platform/database/store_format.h"
#include "platform/database/transactions.h"

namespace ostrel {

class Store : public DatabaseBody, public std::enable_shared_from_this<Store> {
 public:
  /// `path` names the file as the folder has it, links followed; store_file.h opens it.
  Store(std::string path, const StoreFormat& format, std::unique_ptr<SqliteConnection> connection);

  std::shared_ptr<RecordsetBody> OpenRecordset(std::string_view text, RecordsetType type) override;
  std::shared_ptr<RecordsetBody> OpenRows(const std::vector<Bookmark>& rows) override;
  void Execute(std::string_view sql) override;
  void AppendTable(const TableDefinition& table) override;
  void DeleteIndex(std::string_view table, std::string_view index) override;
  void BeginGathering() override { transactions_.BeginGathering(); }
  void EndGathering() noexcept override { transactions_.EndGathering(); }
  void BeginLook() override { transactions_.BeginLook(); }
  void EndLook() noexcept override { transactions_.EndLook(); }
  void Settle() override { transactions_.Settle(); }
  std::weak_ptr<const void> Hold() const override { return transactions_.Held(); }

  void SettleForBox() { transactions_.SettleForBox(); }
  std::size_t RowsStillLost() const { return transactions_.RowsStillLost(); }
  const std::string& Path() const { return path_; }
  bool FileHasMoved() const { return connection_->FileHasMoved(); }

 private:
  std::shared_ptr<RecordsetBody> OpenTable(const std::string& table);
  std::shared_ptr<RecordsetBody> RecordsetOf(std::vector<Bookmark> rows);
  std::vector<Bookmark> Select(const Query& query);
  std::vector<std::vector<Value>> Answer(const Query& query);
  void Alter(const std::string& sql);

  std::string path_;
  const StoreFormat& format_;
  std::unique_ptr<SqliteConnection> connection_;
  Transactions transactions_;
};

}  // namespace ostrel
