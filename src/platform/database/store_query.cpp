#include "platform/database/store_query.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/database/refusals.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

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

class QuestionWriter {
 public:
  QuestionWriter(const TableDefinition& table, const Query& query) : table_(table), query_(query) {}
  StoreQuestion Write();

 private:
  const FieldDefinition& FieldNamed(const std::string& name) const;
  void WriteAnswer();
  void WriteColumn(const AnswerColumn& column);
  void WriteWhere();
  void WriteCondition(const Condition& condition);
  void WriteWholeDay(const FieldDefinition& field, double day);
  void WriteList(const FieldDefinition& field, const Condition& condition);
  void WriteParameter(Value value);
  void WriteRowOrder();
  void WriteLast();

  const TableDefinition& table_;
  const Query& query_;
  StoreQuestion question_;
  std::string& sql_ = question_.Sql;
};

const FieldDefinition& QuestionWriter::FieldNamed(const std::string& name) const {
  const int ordinal = FieldOrdinal(table_, name);
  if (ordinal < 0) {
    throw Failure(failure_number::kTooFewParameters,
                  "Too few parameters: the table has no field \"" + name + "\".");
  }
  return table_.Fields[static_cast<std::size_t>(ordinal)];
}

StoreQuestion QuestionWriter::Write() {
  if (!SameText(query_.Table, table_.Name)) RefuseUnknownTable(query_.Table);
  WriteAnswer();
  sql_ += " FROM " + table_.Name;
  WriteWhere();
  if (query_.Form == QueryForm::Rows) WriteRowOrder();
  if (query_.Form == QueryForm::Aggregates && query_.Answer[0].What == Aggregate::Last) WriteLast();
  if (query_.Form == QueryForm::Distinct) {
    const bool descending = !query_.Order.empty() && query_.Order[0].Descending;
    sql_ += descending ? " ORDER BY 1 DESC" : " ORDER BY 1";
  }
  return std::move(question_);
}

void QuestionWriter::WriteAnswer() {
  sql_ = query_.Form == QueryForm::Distinct ? "SELECT DISTINCT " : "SELECT ";
  if (query_.Form == QueryForm::Rows) sql_ += "rowid";
  const char* joint = "";
  for (const AnswerColumn& column : query_.Answer) {
    sql_ += std::exchange(joint, ", ");
    WriteColumn(column);
  }
}

void QuestionWriter::WriteColumn(const AnswerColumn& column) {
  const FieldDefinition& field = FieldNamed(column.Field);
  question_.Answer.push_back(column.What == Aggregate::Sum ? FieldType::Double : field.Type);
  switch (column.What) {
    case Aggregate::Sum:
      if (field.Type == FieldType::Text) RefuseComparison(field);
      sql_ += "sum(" + field.Name + ")";
      break;
    case Aggregate::Max:
      sql_ += "max(" + field.Name + ")";
      break;
    case Aggregate::Count:
      sql_ += "count(" + field.Name + ")";
      break;
    default:
      sql_ += field.Name;
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

}  // namespace

StoreQuestion QuestionFor(const TableDefinition& table, const Query& query) {
  return QuestionWriter(table, query).Write();
}

}  // namespace ostrel
