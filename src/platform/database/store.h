#pragma once

// A timecard store: one SQLite file with the table OstrelPr. All Database objects on one file share
// one store, so they never lock each other out, see each other's rows and gather into one commit.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/database/database_body.h"
#include "platform/database/day_index.h"
#include "platform/database/shared_commit.h"
#include "platform/database/sqlite_connection.h"
#include "platform/database/store_query.h"
#include "platform/database/totals_memo.h"

namespace ostrel {

class Store : public DatabaseBody, public std::enable_shared_from_this<Store> {
 public:
  /// `path` names the file as the folder has it, links followed; store_file.h opens it.
  Store(std::string path, std::unique_ptr<SqliteConnection> connection);

  std::shared_ptr<RecordsetBody> OpenRecordset(std::string_view text, RecordsetType type) override;
  void Execute(std::string_view sql) override;
  void AppendTable(const TableDefinition& table) override;
  void DeleteIndex(std::string_view table, std::string_view index) override;
  void ShowDerivedLines(const std::vector<DerivedLine>& lines) override;
  void HideDerivedLines() override { derived_.clear(); }
  void ShareCommits() override { commit_.Share(); }
  void SettleShared() override { commit_.Settle(); }
  void CommitShared() override { commit_.EndSharing(); }

  const std::string& Path() const { return path_; }
  SqliteConnection& Connection() { return *connection_; }

  // For the recordsets.

  SharedCommit& Writes() { return commit_; }
  bool ReadOnly() const { return connection_->ReadOnly(); }
  /// Reads all fields of a row; false when it is not there.
  bool ReadRow(Bookmark row, std::vector<Value>& fields);
  /// The same for several rows, all of one state of the store; `take` is called for those that are
  /// there.
  void ReadRows(const std::vector<Bookmark>& rows,
                const std::function<void(Bookmark row, std::vector<Value>& fields)>& take);
  /// Ids of all rows up to one, in the order of entry.
  std::vector<Bookmark> RowsUpTo(Bookmark highest);

 private:
  std::shared_ptr<RecordsetBody> OpenTable(const std::string& table);
  std::vector<Bookmark> Select(const Query& query);
  std::vector<Value> Answer(const Query& query);
  std::vector<Value> AnswerFrom(SqliteStatement& statement, const Query& query,
                                const StoreQuestion& question);
  void Alter(const std::string& sql);

  std::string path_;
  std::unique_ptr<SqliteConnection> connection_;
  SharedCommit commit_;
  DayIndex day_index_;
  TotalsMemo totals_;
  std::optional<SqliteStatement> row_reader_;
  std::string derived_;  // rows as SQL, see QuestionFor
};

}  // namespace ostrel
