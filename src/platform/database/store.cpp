#include "platform/database/store.h"

#include <utility>

#include "platform/database/answer_recordset.h"
#include "platform/database/index_check.h"
#include "platform/database/store_fields.h"
#include "platform/database/store_recordset.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

Value ColumnValue(const SqliteStatement& row, int column, FieldType type) {
  if (row.IsNull(column)) return {};
  switch (type) {
    case FieldType::Single:
      return static_cast<float>(row.Real(column));
    case FieldType::Double:
      return row.Real(column);
    case FieldType::Date:
      return Moment{row.Real(column)};
    case FieldType::Text:
      return row.Text(column);
  }
  return {};
}

Value AnswerValue(const SqliteStatement& row, QueryForm form, FieldType type) {
  if (form == QueryForm::Count) return static_cast<std::int32_t>(row.Integer(0));
  return ColumnValue(row, 0, form == QueryForm::Sum ? FieldType::Double : type);
}

void BindAll(SqliteStatement& statement, const std::vector<Value>& parameters) {
  int parameter = 1;
  for (const Value& value : parameters) statement.Bind(parameter++, value);
}

}  // namespace

Store::Store(std::string path, std::unique_ptr<SqliteConnection> connection)
    : path_(std::move(path)),
      connection_(std::move(connection)),
      commit_(*connection_),
      day_index_(*connection_),
      totals_(*connection_) {}

std::shared_ptr<RecordsetBody> Store::OpenRecordset(std::string_view text, RecordsetType) {
  const Query query = ReadQuery(text);
  if (query.Form == QueryForm::Table) return OpenTable(query.Table);
  if (query.Form != QueryForm::Rows) {
    return std::make_shared<AnswerRecordset>(query.Answer, Answer(query));
  }
  if (const std::optional<DayOfEmployee> asked = AsDayOfEmployee(query)) {
    if (auto rows = day_index_.LinesOf(*asked, commit_.KeyChanges())) {
      return std::make_shared<StoreRecordset>(shared_from_this(), std::move(*rows));
    }
  }
  return std::make_shared<StoreRecordset>(shared_from_this(), Select(query));
}

std::shared_ptr<RecordsetBody> Store::OpenTable(const std::string& table) {
  if (!SameText(table, kLineTableName)) {
    throw Failure(failure_number::kNoSuchTable, "There is no table \"" + table + "\".");
  }
  SqliteStatement& highest = connection_->Question("SELECT max(rowid) FROM OstrelPr");
  Bookmark row = 0;
  while (highest.Step()) row = highest.Integer(0);
  return std::make_shared<StoreRecordset>(shared_from_this(), WholeTable{row});
}

std::vector<Bookmark> Store::Select(const Query& query) {
  const StoreQuestion question = QuestionFor(query);
  SqliteStatement& statement = connection_->Question(question.Sql);
  BindAll(statement, question.Parameters);
  std::vector<Bookmark> rows;
  while (statement.Step()) rows.push_back(statement.Integer(0));
  return rows;
}

std::vector<Value> Store::Answer(const Query& query) {
  const StoreQuestion question = QuestionFor(query, derived_);
  const bool total = query.Form == QueryForm::Sum || query.Form == QueryForm::Count;
  if (derived_.empty() && total) return {totals_.Answer(question, commit_.Changes())};
  if (derived_.empty()) return AnswerFrom(connection_->Question(question.Sql), query, question);
  SqliteStatement onceOnly(*connection_, question.Sql, StoreStep::Read);
  return AnswerFrom(onceOnly, query, question);
}

std::vector<Value> Store::AnswerFrom(SqliteStatement& statement, const Query& query,
                                     const StoreQuestion& question) {
  BindAll(statement, question.Parameters);
  std::vector<Value> values;
  while (statement.Step()) {
    values.push_back(AnswerValue(statement, query.Form, question.Answer));
  }
  // An aggregate always answers, with Null over no rows.
  if (query.Form != QueryForm::Distinct && values.empty()) values.emplace_back();
  return values;
}

void Store::ShowDerivedLines(const std::vector<DerivedLine>& lines) {
  derived_.clear();
  const auto& fields = LineTable().Fields;
  for (const DerivedLine& line : lines) {
    std::vector<Value> values(fields.size());
    for (const auto& [name, value] : line) {
      const int ordinal = LineFieldOrdinal(name);
      if (ordinal < 0) RefuseUnknownField(name);
      const auto at = static_cast<std::size_t>(ordinal);
      values[at] = ValueForField(fields[at], value);
    }
    derived_ += (derived_.empty() ? "VALUES " : ",") + DerivedRowSql(values);
  }
}

bool Store::ReadRow(Bookmark row, std::vector<Value>& fields) {
  if (!row_reader_) {
    row_reader_.emplace(*connection_, "SELECT * FROM OstrelPr WHERE rowid = ?1", StoreStep::Read);
  }
  row_reader_->Bind(1, row);
  if (!row_reader_->Step()) return false;
  const auto& definitions = LineTable().Fields;
  fields.resize(definitions.size());
  for (std::size_t i = 0; i < definitions.size(); ++i) {
    fields[i] = ColumnValue(*row_reader_, static_cast<int>(i), definitions[i].Type);
  }
  row_reader_->Reset();
  return true;
}

void Store::ReadRows(const std::vector<Bookmark>& rows,
                     const std::function<void(Bookmark row, std::vector<Value>& fields)>& take) {
  // A statement that stands on a row keeps the file's lock for those that follow.
  struct Hold {
    explicit Hold(SqliteStatement& statement) : Statement(statement) { Statement.Step(); }
    ~Hold() { Statement.Reset(); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    SqliteStatement& Statement;
  };
  std::optional<Hold> hold;
  if (rows.size() > 1 && !connection_->InTransaction()) {
    hold.emplace(connection_->Question("SELECT 1 FROM OstrelPr LIMIT 1"));
  }
  std::vector<Value> fields;
  for (const Bookmark row : rows) {
    if (ReadRow(row, fields)) take(row, fields);
  }
}

std::vector<Bookmark> Store::RowsUpTo(Bookmark highest) {
  SqliteStatement& statement =
      connection_->Question("SELECT rowid FROM OstrelPr WHERE rowid <= ?1 ORDER BY rowid");
  statement.Bind(1, highest);
  std::vector<Bookmark> rows;
  while (statement.Step()) rows.push_back(statement.Integer(0));
  return rows;
}

void Store::Execute(std::string_view sql) {
  const Action action = ReadAction(sql);
  const auto* creation = std::get_if<IndexCreation>(&action);
  if (creation == nullptr) RefuseOperation("this action statement");
  if (!SameText(creation->Table, kLineTableName)) {
    throw Failure(failure_number::kNoSuchTable, "There is no table \"" + creation->Table + "\".");
  }
  if (LineFieldOrdinal(creation->Field) < 0) RefuseUnknownField(creation->Field);
  // Ascending whatever is asked for. SQLite walks an index from either end and keeps equal entries in
  // the order of their row ids, so walked backwards this one gives the newest moment first and, among
  // equals, the line entered last: the order of the view. A descending one would need sorting.
  // A commit that failed may have reached the file, and is tried again.
  Alter("CREATE INDEX IF NOT EXISTS " + QuotedName(creation->Index) + " ON OstrelPr(" +
        QuotedName(creation->Field) + ")");
}

// A new store has had its table from the first moment on.
void Store::AppendTable(const TableDefinition& table) {
  const std::string sql = CreationSql(table);
  if (sql == CreationSql(LineTable())) return;  // no store is without it
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
  commit_.Settle();
  connection_->Run(sql, StoreStep::Alter);
}

}  // namespace ostrel
