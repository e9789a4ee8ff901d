#include "platform/database/sql_dialect.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "platform/database/sql_tokens.h"
#include "platform/values/dates.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

constexpr std::array<std::pair<std::string_view, Aggregate>, 4> kAggregates{{
    {"Sum", Aggregate::Sum},
    {"Max", Aggregate::Max},
    {"Count", Aggregate::Count},
    {"Last", Aggregate::Last},
}};

/// Reads one statement; each Read... takes the tokens of its part and refuses anything else.
class StatementReader {
 public:
  explicit StatementReader(std::string_view sql) : tokens_(sql) { Advance(); }

  Query ReadQuery();
  Action ReadAction();

 private:
  void Advance() { token_ = tokens_.Next(); }
  [[noreturn]] void Refuse() const { tokens_.Refuse(token_.Start); }

  bool AtWord(std::string_view word) const {
    return token_.Kind == TokenKind::Word && SameText(token_.Spelling, word);
  }
  bool AtSymbol(char symbol) const {
    return token_.Kind == TokenKind::Symbol && token_.Spelling[0] == symbol;
  }
  bool TakeWord(std::string_view word);
  bool TakeSymbol(char symbol);
  void NeedWord(std::string_view word);
  void NeedSymbol(char symbol);
  std::string NeedName();
  void NeedEnd();

  Query ReadSelect();
  void ReadAnswer(Query& query);
  AnswerColumn ReadAggregate();
  void ReadWhere(Query& query);
  Condition ReadCondition();
  Condition ReadWholeDay();
  void ReadOrder(Query& query);
  std::vector<Value> ReadNumberList();
  Value ReadLiteral();
  double ReadNumber();
  Moment ReadDate();
  bool TakeDescending();
  IndexCreation ReadIndexCreation();
  TableUpdate ReadUpdate();

  SqlTokens tokens_;
  Token token_;
};

bool StatementReader::TakeWord(std::string_view word) {
  if (!AtWord(word)) return false;
  Advance();
  return true;
}

bool StatementReader::TakeSymbol(char symbol) {
  if (!AtSymbol(symbol)) return false;
  Advance();
  return true;
}

void StatementReader::NeedWord(std::string_view word) {
  if (!TakeWord(word)) Refuse();
}

void StatementReader::NeedSymbol(char symbol) {
  if (!TakeSymbol(symbol)) Refuse();
}

std::string StatementReader::NeedName() {
  if (token_.Kind != TokenKind::Word && token_.Kind != TokenKind::BracketedName) Refuse();
  std::string name(token_.Spelling);
  Advance();
  return name;
}

void StatementReader::NeedEnd() {
  TakeSymbol(';');
  if (token_.Kind != TokenKind::End) Refuse();
}

Query StatementReader::ReadQuery() {
  Query query;
  if (TakeWord("Select")) {
    query = ReadSelect();
  } else {
    query.Form = QueryForm::Table;
    query.Table = NeedName();
  }
  NeedEnd();
  return query;
}

Query StatementReader::ReadSelect() {
  Query query;
  ReadAnswer(query);
  NeedWord("from");
  query.Table = NeedName();
  if (TakeWord("where")) ReadWhere(query);
  if (query.Form == QueryForm::Rows || query.Form == QueryForm::Distinct) ReadOrder(query);
  return query;
}

void StatementReader::ReadAnswer(Query& query) {
  if (TakeSymbol('*')) {
    query.Form = QueryForm::Rows;
    return;
  }
  if (TakeWord("Distinct")) {
    query.Form = QueryForm::Distinct;
    const std::string field = NeedName();
    query.Answer.push_back({Aggregate::None, field, field});
    return;
  }
  query.Form = QueryForm::Aggregates;
  do {
    const std::size_t start = token_.Start;
    query.Answer.push_back(ReadAggregate());
    // The last row is looked for from the end, which no sum is.
    const auto isLast = [](const AnswerColumn& each) { return each.What == Aggregate::Last; };
    if (query.Answer.size() > 1 && std::any_of(query.Answer.begin(), query.Answer.end(), isLast)) {
      tokens_.Refuse(start);
    }
  } while (TakeSymbol(','));
}

AnswerColumn StatementReader::ReadAggregate() {
  for (const auto& [word, aggregate] : kAggregates) {
    if (!TakeWord(word)) continue;
    AnswerColumn column{aggregate, {}, {}};
    NeedSymbol('(');
    column.Field = NeedName();
    NeedSymbol(')');
    NeedWord("as");
    column.Name = NeedName();
    return column;
  }
  Refuse();
}

void StatementReader::ReadWhere(Query& query) {
  do {
    query.Where.push_back(ReadCondition());
  } while (TakeWord("and"));
}

Condition StatementReader::ReadCondition() {
  Condition condition;
  condition.Field = NeedName();
  if (SameText(condition.Field, "INT") && AtSymbol('(')) return ReadWholeDay();
  if (TakeWord("in")) {
    condition.Test = Comparison::In;
    condition.Operands = ReadNumberList();
    return condition;
  }
  if (TakeWord("Not")) {
    NeedWord("in");
    condition.Test = Comparison::NotIn;
    condition.Operands = ReadNumberList();
    return condition;
  }
  if (TakeSymbol('>')) {
    condition.Test = Comparison::Greater;
  } else if (TakeSymbol('<')) {
    condition.Test = Comparison::Less;
  } else {
    NeedSymbol('=');
  }
  condition.Operands.push_back(ReadLiteral());
  return condition;
}

Condition StatementReader::ReadWholeDay() {
  Condition condition;
  condition.WholeDay = true;
  NeedSymbol('(');
  condition.Field = NeedName();
  NeedSymbol(')');
  NeedSymbol('=');
  condition.Operands.emplace_back(ReadDate());
  return condition;
}

std::vector<Value> StatementReader::ReadNumberList() {
  std::vector<Value> numbers;
  NeedSymbol('(');
  do {
    numbers.emplace_back(ReadNumber());
  } while (TakeSymbol(','));
  NeedSymbol(')');
  return numbers;
}

Value StatementReader::ReadLiteral() {
  if (token_.Kind == TokenKind::Date) return ReadDate();
  if (token_.Kind != TokenKind::Text) return ReadNumber();
  std::string text(token_.Spelling);
  for (std::size_t quote = text.find("''"); quote != text.npos;
       quote = text.find("''", quote + 1)) {
    text.erase(quote, 1);
  }
  Advance();
  return text;
}

double StatementReader::ReadNumber() {
  const bool negative = TakeSymbol('-');
  if (!negative) TakeSymbol('+');
  if (token_.Kind != TokenKind::Number) Refuse();
  const std::string_view digits = token_.Spelling;
  double number = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (result.ec != std::errc() || result.ptr != digits.data() + digits.size()) Refuse();
  Advance();
  return negative ? -number : number;
}

Moment StatementReader::ReadDate() {
  if (token_.Kind != TokenKind::Date) Refuse();
  const std::optional<Moment> moment = ReadMoment(token_.Spelling);
  if (!moment) {
    throw Failure(failure_number::kQuerySyntax,
                  "Syntax error in date in the query: #" + LeftOf(token_.Spelling, 40) + "#.");
  }
  Advance();
  return *moment;
}

void StatementReader::ReadOrder(Query& query) {
  const std::size_t start = token_.Start;
  if (!TakeWord("Order")) return;
  NeedWord("by");
  do {
    OrderTerm term{NeedName()};
    term.Descending = TakeDescending();
    query.Order.push_back(std::move(term));
  } while (TakeSymbol(','));
  if (query.Form != QueryForm::Distinct) return;
  const bool byField =
      query.Order.size() == 1 && SameText(query.Order[0].Field, query.Answer[0].Field);
  if (!byField) tokens_.Refuse(start);
}

bool StatementReader::TakeDescending() {
  if (TakeWord("Desc")) return true;
  TakeWord("Asc");
  return false;
}

Action StatementReader::ReadAction() {
  Action action;
  if (TakeWord("Create")) {
    action = ReadIndexCreation();
  } else {
    NeedWord("Update");
    action = ReadUpdate();
  }
  NeedEnd();
  return action;
}

IndexCreation StatementReader::ReadIndexCreation() {
  IndexCreation creation;
  NeedWord("Index");
  creation.Index = NeedName();
  NeedWord("on");
  creation.Table = NeedName();
  NeedSymbol('(');
  creation.Field = NeedName();
  creation.Descending = TakeDescending();
  NeedSymbol(')');
  return creation;
}

TableUpdate StatementReader::ReadUpdate() {
  TableUpdate update;
  update.Table = NeedName();
  NeedWord("set");
  do {
    Assignment assignment{NeedName()};
    NeedSymbol('=');
    assignment.Number = ReadNumber();
    update.Assignments.push_back(std::move(assignment));
  } while (TakeSymbol(','));
  return update;
}

}  // namespace

std::vector<std::string> ColumnNames(const Query& query) {
  std::vector<std::string> names;
  for (const AnswerColumn& column : query.Answer) names.push_back(column.Name);
  return names;
}

Query ReadQuery(std::string_view sql) { return StatementReader(sql).ReadQuery(); }

Action ReadAction(std::string_view sql) { return StatementReader(sql).ReadAction(); }

}  // namespace ostrel
