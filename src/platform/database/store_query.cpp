#include "platform/database/store_query.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/database/store_fields.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

const FieldDefinition& FieldNamed(const std::string& name) {
  const int ordinal = LineFieldOrdinal(name);
  if (ordinal < 0) {
    throw Failure(failure_number::kTooFewParameters,
                  "Too few parameters: the table has no field \"" + name + "\".");
  }
  return LineTable().Fields[static_cast<std::size_t>(ordinal)];
}

[[noreturn]] void RefuseComparison(const FieldDefinition& field) {
  throw Failure(failure_number::kFieldConversion,
                "Type mismatch: the field " + field.Name + " cannot be compared with this value.");
}

/// Single precision where the field keeps no more, so that 12.1 finds the 12.1 that was stored.
double NumberToCompare(const FieldDefinition& field, const Value& operand) {
  if (operand.IsText() || field.Type == FieldType::Text) RefuseComparison(field);
  const double number = operand.NumberOrZero();
  const bool single =
      field.Type == FieldType::Single && std::abs(number) <= std::numeric_limits<float>::max();
  return single ? static_cast<double>(static_cast<float>(number)) : number;
}

Value ValueToCompare(const FieldDefinition& field, const Value& operand) {
  if (!operand.IsText()) return NumberToCompare(field, operand);
  if (field.Type != FieldType::Text) RefuseComparison(field);
  return operand;
}

// Lists are written out instead, since they may be longer than SQLite takes parameters.
void AppendNumber(std::string& sql, double number) {
  char digits[32];
  sql.append(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
}

std::string QuotedText(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
  return quoted + "'";
}

class QuestionWriter {
 public:
  QuestionWriter(const Query& query, const std::string& derived)
      : query_(query), derived_(derived) {}
  StoreQuestion Write();

 private:
  void WriteAnswer();
  void WriteSource();
  void WriteWhere();
  void WriteCondition(const Condition& condition);
  void WriteWholeDay(const FieldDefinition& field, double day);
  void WriteList(const FieldDefinition& field, const Condition& condition);
  void WriteParameter(Value value);
  void WriteRowOrder();
  void WriteLast();

  const Query& query_;
  const std::string& derived_;
  StoreQuestion question_;
  std::string& sql_ = question_.Sql;
};

StoreQuestion QuestionWriter::Write() {
  if (!SameText(query_.Table, kLineTableName)) {
    throw Failure(failure_number::kNoSuchTable, "There is no table \"" + query_.Table + "\".");
  }
  WriteAnswer();
  WriteSource();
  WriteWhere();
  if (query_.Form == QueryForm::Rows) WriteRowOrder();
  if (query_.Form == QueryForm::Last) WriteLast();
  if (query_.Form == QueryForm::Distinct) {
    const bool descending = !query_.Order.empty() && query_.Order[0].Descending;
    sql_ += descending ? " ORDER BY 1 DESC" : " ORDER BY 1";
  }
  return std::move(question_);
}

void QuestionWriter::WriteAnswer() {
  sql_ = "SELECT ";
  if (query_.Form == QueryForm::Rows) {
    sql_ += "rowid";
    return;
  }
  const FieldDefinition& field = FieldNamed(query_.Field);
  question_.Answer = field.Type;
  std::string& expression = question_.Expression;
  switch (query_.Form) {
    case QueryForm::Distinct:
      expression = "DISTINCT " + field.Name;
      break;
    case QueryForm::Sum:
      if (field.Type == FieldType::Text) RefuseComparison(field);
      expression = "sum(" + field.Name + ")";
      break;
    case QueryForm::Max:
      expression = "max(" + field.Name + ")";
      break;
    case QueryForm::Count:
      expression = "count(" + field.Name + ")";
      break;
    default:
      expression = field.Name;
  }
  sql_ += expression;
}

// Rows are known by their ids, which a derived row has none of.
void QuestionWriter::WriteSource() {
  const bool byRow = query_.Form == QueryForm::Rows || query_.Form == QueryForm::Last;
  if (byRow || derived_.empty()) {
    sql_ += " FROM OstrelPr";
  } else {
    sql_ += " FROM (SELECT * FROM OstrelPr UNION ALL " + derived_ + ")";
  }
}

void QuestionWriter::WriteWhere() {
  const char* joint = " WHERE ";
  for (const Condition& condition : query_.Where) {
    sql_ += std::exchange(joint, " AND ");
    WriteCondition(condition);
  }
}

void QuestionWriter::WriteCondition(const Condition& condition) {
  const FieldDefinition& field = FieldNamed(condition.Field);
  if (condition.WholeDay) return WriteWholeDay(field, condition.Operands[0].NumberOrZero());
  sql_ += field.Name;
  switch (condition.Test) {
    case Comparison::Equal:
      sql_ += " = ";
      break;
    case Comparison::Greater:
      sql_ += " > ";
      break;
    case Comparison::Less:
      sql_ += " < ";
      break;
    case Comparison::In:
    case Comparison::NotIn:
      return WriteList(field, condition);
  }
  WriteParameter(ValueToCompare(field, condition.Operands[0]));
}

// A range instead of a function of the field, so that the index serves it.
void QuestionWriter::WriteWholeDay(const FieldDefinition& field, double day) {
  if (field.Type != FieldType::Date) RefuseComparison(field);
  if (day != std::floor(day)) {
    sql_ += "0";
    return;
  }
  sql_ += field.Name + " >= ";
  WriteParameter(day);
  sql_ += " AND " + field.Name + " < ";
  WriteParameter(day + 1);
}

void QuestionWriter::WriteList(const FieldDefinition& field, const Condition& condition) {
  sql_ += condition.Test == Comparison::In ? " IN (" : " NOT IN (";
  const char* joint = "";
  for (const Value& operand : condition.Operands) {
    sql_ += std::exchange(joint, ",");
    AppendNumber(sql_, NumberToCompare(field, operand));
  }
  sql_ += ")";
}

void QuestionWriter::WriteParameter(Value value) {
  question_.Parameters.push_back(std::move(value));
  sql_.append("?").append(std::to_string(question_.Parameters.size()));
}

void QuestionWriter::WriteRowOrder() {
  sql_ += " ORDER BY ";
  bool descending = false;
  for (const OrderTerm& term : query_.Order) {
    descending = term.Descending;
    sql_ += FieldNamed(term.Field).Name + (descending ? " DESC, " : ", ");
  }
  sql_ += descending ? "rowid DESC" : "rowid";
}

// With a day to look in, the index finds its lines, and the plus keeps SQLite from walking the whole
// table backwards instead. Without one, that walk is the shortest.
void QuestionWriter::WriteLast() {
  bool inDay = false;
  for (const Condition& condition : query_.Where) inDay = inDay || condition.WholeDay;
  sql_ += inDay ? " ORDER BY +rowid DESC LIMIT 1" : " ORDER BY rowid DESC LIMIT 1";
}

bool IsPlainOrderOf(const Query& query, std::string_view field) {
  return query.Order.size() == 1 && !query.Order[0].Descending &&
         SameText(query.Order[0].Field, field);
}

bool IsNumberTest(const Condition& condition, std::string_view field) {
  return condition.Test == Comparison::Equal && !condition.WholeDay &&
         SameText(condition.Field, field) && condition.Operands[0].KindOf() == Value::Kind::Double;
}

}  // namespace

StoreQuestion QuestionFor(const Query& query, const std::string& derived) {
  return QuestionWriter(query, derived).Write();
}

std::string DerivedRowSql(const std::vector<Value>& values) {
  std::string sql;
  for (const Value& value : values) {
    sql += sql.empty() ? '(' : ',';
    if (value.IsNull()) {
      sql += "NULL";
    } else if (value.IsText()) {
      sql += QuotedText(value.Characters());
    } else {
      AppendNumber(sql, value.NumberOrZero());
    }
  }
  return sql + ")";
}

std::optional<DayOfEmployee> AsDayOfEmployee(const Query& query) {
  const bool form = query.Form == QueryForm::Rows && SameText(query.Table, kLineTableName) &&
                    query.Where.size() == 2 && IsPlainOrderOf(query, "ETIME");
  if (!form) return {};
  const Condition& day = query.Where[0];
  const Condition& number = query.Where[1];
  if (!day.WholeDay || !SameText(day.Field, "ETIME") || !IsNumberTest(number, "EMPL_NUMB"))
    return {};
  const double date = day.Operands[0].NumberOrZero();
  const double employee = number.Operands[0].NumberOrZero();
  if (date != std::floor(date) || std::abs(employee) > std::numeric_limits<float>::max()) return {};
  return DayOfEmployee{date, static_cast<float>(employee)};
}

}  // namespace ostrel
