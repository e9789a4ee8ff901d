#pragma once

// The small questions that the form puts to the data without keeping a recordset open: one
// aggregate value, or the distinct values of a field as a list. Neither routine ever reports a
// failure; a lookup that cannot be made finds nothing.
//
// The table is named by a word. "Prms" and other four-letter words are the office's tables, to which
// the client number is joined; a text with a blank and "app" in it, such as "Prin App", is the store.

#include <cstdint>
#include <string>

#include "platform/database/recordset.h"
#include "platform/values/value.h"

namespace ostrel {

/// One aggregate over the lines or rows that the criteria admit.
///   FieldExpr  a field name
///   Criteria   where text, with or without the word where; an order clause in it is cut off
///   Aggregate  Sum, Max, Count or Last (the row entered last)
///   returns    the value; 0 where there are no rows, the value is Null or the query cannot be made
Value DomainFunc(const std::string& Domain, const std::string& FieldExpr,
                 const std::string& Criteria, const std::string& Aggregate);

/// The distinct values of a field in ascending order, as "in (101,102,130)".
///   Criteria   where text with its own " where "
///   NotList    out: " Not in (101,102,130)"
///   ListCount  out: how many
///   returns    the list; with no rows the empty text, as is NotList, and the count is 0
std::string DomainList(const std::string& Domain, const std::string& FieldExpr,
                       const std::string& Criteria, std::string& NotList, std::int32_t& ListCount);

/// Sums and count of the lines of a filter, by one pass over them.
struct Totals {
  double Quantity = 0, Hours = 0, Gross = 0;
  std::int32_t Lines = 0;  ///< with an employee number
};

/// What DomainFunc answers to the three sums and the count behind every view, 0 as there.
///   Criteria  where text with its own " where ", or empty
Totals TotalsOf(const std::string& Criteria);

/// A field's number in single precision: 0 for Null, else the numeric prefix of its text. A field
/// that cannot be read, for want of a current row say, gives 0 and no report.
float NumOrZero(const Recordset& recordset, const char* field) noexcept;

}  // namespace ostrel
