#include "platform/database/totals_memo.h"

#include <algorithm>
#include <utility>

namespace ostrel {
namespace {

Value AnswerIn(const SqliteStatement& row, int column, const std::string& expression) {
  if (row.IsNull(column)) return {};
  if (expression.starts_with("count")) return static_cast<std::int32_t>(row.Integer(column));
  return row.Real(column);
}

}  // namespace

Value TotalsMemo::Answer(const StoreQuestion& question, std::uint64_t changes) {
  // The version is taken before the lines are read: a commit of others in between makes the answer
  // look old, never young.
  Scope scope{question.Sql.substr(question.Sql.find(" FROM ")), question.Parameters, changes,
              connection_.DataVersion()};
  const Total* known = Find(question.Expression);
  if (scope == scope_ && known != nullptr) return known->Answer;

  if (scope == scope_) {
    totals_.push_back(Ask({{question.Expression, {}}}, scope)[0]);
    return totals_.back().Answer;
  }
  // The same totals as last time, or the first of others.
  totals_ = Ask(known != nullptr ? totals_ : std::vector<Total>{{question.Expression, {}}}, scope);
  scope_ = std::move(scope);
  return Find(question.Expression)->Answer;
}

const TotalsMemo::Total* TotalsMemo::Find(const std::string& expression) const {
  const auto found = std::find_if(totals_.begin(), totals_.end(), [&](const Total& total) {
    return total.Expression == expression;
  });
  return found == totals_.end() ? nullptr : &*found;
}

std::vector<TotalsMemo::Total> TotalsMemo::Ask(const std::vector<Total>& totals,
                                               const Scope& scope) {
  std::string sql = "SELECT ";
  for (const Total& total : totals) sql += (&total == &totals[0] ? "" : ", ") + total.Expression;
  SqliteStatement& statement = connection_.Question(sql + scope.Rows);
  int parameter = 1;
  for (const Value& value : scope.Parameters) statement.Bind(parameter++, value);

  std::vector<Total> answered = totals;
  while (statement.Step()) {
    for (std::size_t i = 0; i < answered.size(); ++i) {
      answered[i].Answer = AnswerIn(statement, static_cast<int>(i), totals[i].Expression);
    }
  }
  return answered;
}

}  // namespace ostrel
