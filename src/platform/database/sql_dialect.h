#pragma once

// The program's own small SQL, read by tokens in one pass into plain data that the store and the
// folder of tables each answer in their own way. These forms and no others:
//
//   T                              a table as it stands; [T] is the same name
//   Select * from T <where> <order>
//   Select Distinct F from T <where> Order by F
//   Select Sum(F) as X from T <where>          also Max, Count, Last; Sum, Max and Count also as a
//                                              list, answered by one pass over the rows
//   Create Index I on T (F DESC)
//   Update T set F=number, F=number
//
// A where clause is a chain of tests joined by "and": F = literal, also > and <; INT(F) = #date#;
// F in (1,2,3); F Not in (1,2,3). A literal is a number with or without a sign, 'text' with '' for
// a quote in it, or a date between number signs, month first. Words match without regard to case. A
// trailing semicolon is allowed, and nothing behind it.
//
// Anything else is Failure 3075, whose text names the place: sub-selects, comments, a second
// statement, another function or operator, a number that runs into letters ("F = 12a"), a
// test with nothing to compare to. Names of tables and fields are not judged here.

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/values/value.h"

namespace ostrel {

enum class Comparison { Equal, Greater, Less, In, NotIn };

/// One test of a where clause. All tests of a query must hold; a Null never passes one.
struct Condition {
  std::string Field;
  bool WholeDay =
      false;  ///< INT(Field) = #date#: the day alone; never true where the date has a time
  Comparison Test = Comparison::Equal;
  std::vector<Value> Operands;  ///< Double, Text or Date; one, or any number for In and NotIn
};

struct OrderTerm {
  std::string Field;
  bool Descending = false;
};

enum class QueryForm { Table, Rows, Distinct, Aggregates };

/// What a column of an answer holds of its field; None is the field's value itself.
enum class Aggregate { None, Sum, Max, Count, Last };

struct AnswerColumn {
  Aggregate What = Aggregate::None;
  std::string Field;
  std::string Name;  ///< the field's for Distinct, X of "as X"
};

struct Query {
  QueryForm Form = QueryForm::Rows;
  std::string Table;
  std::vector<AnswerColumn> Answer;  ///< one for Distinct, one or more aggregates
  std::vector<Condition> Where;
  std::vector<OrderTerm> Order;
};

struct IndexCreation {
  std::string Index;
  std::string Table;
  std::string Field;
  bool Descending = false;
};

struct Assignment {
  std::string Field;
  double Number = 0;
};

struct TableUpdate {
  std::string Table;
  std::vector<Assignment> Assignments;
};

/// Names of the answer's columns.
std::vector<std::string> ColumnNames(const Query& query);

using Action = std::variant<IndexCreation, TableUpdate>;

/// A table's name or a query, as OpenRecordset takes it.
///   throws  Failure 3075
Query ReadQuery(std::string_view sql);

/// A statement without a result.
///   throws  Failure 3075
Action ReadAction(std::string_view sql);

}  // namespace ostrel
