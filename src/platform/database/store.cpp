#include "platform/database/store.h"

#include <utility>

#include "platform/database/answer_recordset.h"
#include "platform/database/field_values.h"
#include "platform/database/index_check.h"
#include "platform/database/refusals.h"
#include "platform/database/store_query.h"
#include "platform/database/store_recordset.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

Value AnswerValue(const SqliteStatement& row, int column, Aggregate what, FieldType type) {
  if (row.IsNull(column)) return {};
  if (what == Aggregate::Count) return static_cast<std::int32_t>(row.Integer(column));
  return ColumnValue(row, column, type);
}

void BindAll(SqliteStatement& statement, const std::vector<Value>& parameters) {
  int parameter = 1;
  for (const Value& value : parameters) statement.Bind(parameter++, value);
}

}  // namespace

Store::Store(std::string path, const StoreFormat& format,
             std::unique_ptr<SqliteConnection> connection)
    : path_(std::move(path)),
      format_(format),
      connection_(std::move(connection)),
      transactions_(*connection_, format.Table) {}

std::shared_ptr<RecordsetBody> Store::OpenRecordset(std::string_view text, RecordsetType) {
  const Query query = ReadQuery(text);
  switch (query.Form) {
    case QueryForm::Table:
      return OpenTable(query.Table);
    case QueryForm::Rows:
      return RecordsetOf(Select(query));
    default:
      return std::make_shared<AnswerRecordset>(ColumnNames(query), Answer(query));
  }
}

std::shared_ptr<RecordsetBody> Store::OpenRows(const std::vector<Bookmark>& rows) {
  return RecordsetOf(rows);
}

// A recordset keeps the whole store alive, not its rows alone.
std::shared_ptr<RecordsetBody> Store::RecordsetOf(std::vector<Bookmark> rows) {
  return std::make_shared<StoreRecordset>(
      StoreRows(shared_from_this(), *connection_, transactions_, format_.Table), std::move(rows));
}

std::shared_ptr<RecordsetBody> Store::OpenTable(const std::string& table) {
  if (!SameText(table, format_.Table.Name)) RefuseUnknownTable(table);
  transactions_.Hold();
  SqliteStatement& highest =
      connection_->ReadStatement("SELECT max(rowid) FROM " + format_.Table.Name);
  Bookmark row = 0;
  while (highest.Step()) row = highest.Integer(0);
  return std::make_shared<StoreRecordset>(
      StoreRows(shared_from_this(), *connection_, transactions_, format_.Table), WholeTable{row});
}

std::vector<Bookmark> Store::Select(const Query& query) {
  const StoreQuestion question = QuestionFor(format_.Table, query);
  transactions_.Hold();
  SqliteStatement& statement = connection_->ReadStatement(question.Sql);
  BindAll(statement, question.Parameters);
  std::vector<Bookmark> rows;
  while (statement.Step()) rows.push_back(statement.Integer(0));
  return rows;
}

std::vector<std::vector<Value>> Store::Answer(const Query& query) {
  const StoreQuestion question = QuestionFor(format_.Table, query);
  transactions_.Hold();
  SqliteStatement& statement = connection_->ReadStatement(question.Sql);
  BindAll(statement, question.Parameters);
  std::vector<std::vector<Value>> rows;
  while (statement.Step()) {
    auto& row = rows.emplace_back();
    for (std::size_t i = 0; i < query.Answer.size(); ++i) {
      row.push_back(
          AnswerValue(statement, static_cast<int>(i), query.Answer[i].What, question.Answer[i]));
    }
  }
  // An aggregate always answers, with Null over no rows.
  if (query.Form == QueryForm::Aggregates && rows.empty()) rows.emplace_back(query.Answer.size());
  return rows;
}

void Store::Execute(std::string_view sql) {
  const Action action = ReadAction(sql);
  const auto* creation = std::get_if<IndexCreation>(&action);
  if (creation == nullptr) RefuseOperation("this action statement");
  const TableDefinition& table = format_.Table;
  if (!SameText(creation->Table, table.Name)) RefuseUnknownTable(creation->Table);
  if (FieldOrdinal(table, creation->Field) < 0) RefuseUnknownField(creation->Field);
  // Ascending whatever is asked for. SQLite walks an index from either end and keeps equal entries in
  // the order of their row ids, so walked backwards this one gives the newest moment first and, among
  // equals, the line entered last: the order of the view. A descending one would need sorting.
  // A commit that failed may have reached the file, and is tried again.
  Alter("CREATE INDEX IF NOT EXISTS " + QuotedName(creation->Index) + " ON " + table.Name + "(" +
        QuotedName(creation->Field) + ")");
}

// A new store has had its table from the first moment on.
void Store::AppendTable(const TableDefinition& table) {
  const std::string sql = CreationSql(table);
  if (sql == CreationSql(format_.Table)) return;  // no store is without it
  Alter(sql);
}

void Store::DeleteIndex(std::string_view table, std::string_view index) {
  if (!HasIndex(*connection_, table, index)) {
    throw Failure(failure_number::kItemNotFound,
                  "The table has no index \"" + std::string(index) + "\".");
  }
  Alter("DROP INDEX " + QuotedName(index));
}

// What has been gathered is made durable first, so that it does not share the fate of this change.
void Store::Alter(const std::string& sql) {
  transactions_.Settle();
  connection_->Run(sql, StoreStep::Alter);
}

}  // namespace ostrel
