#include "store/lookups.h"

#include <vector>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/files/files.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "store/line_table.h"
#include "store/number_list.h"

namespace ostrel {

namespace {

constexpr std::size_t kTableWordLength = 4;

/// What the table selector stands for.
struct Selected {
  std::string Table;  // file name without its ending
  bool InStore = false;
};

Selected SelectTable(const std::string& Domain) {
  const std::size_t blank = Domain.find(' ');
  Selected selected{Domain.substr(0, blank),
                    blank != std::string::npos && ContainsText(Domain, "app")};
  if (selected.Table.size() == kTableWordLength) {
    selected.Table += ClientNumb;
  } else if (SameText(selected.Table, "REPORTS")) {
    selected.InStore = true;
  }
  return selected;
}

std::string WhereClause(const std::string& Criteria) {
  const std::string trimmed = Trim(Criteria);
  if (trimmed.empty()) return {};
  const std::size_t where = FindText(trimmed, "Where ");
  std::string clause =
      where == std::string::npos ? " Where " + trimmed : " " + trimmed.substr(where);
  const std::size_t order = FindText(clause, "Order ");
  if (order != std::string::npos) clause.resize(order);
  return clause;
}

/// The client's store is the one that is open for the run: it sees each line as soon as it is written,
/// and is the file that the program writes to. Another store is opened for the one question.
Recordset Ask(const Selected& selected, const std::string& file, const std::string& query) {
  if (!selected.InStore) return DescDb.OpenRecordset(query, RecordsetType::Dynaset);
  const std::string path = file + ".mdb";
  if (path == StorePath()) return PrinDb.OpenRecordset(query, RecordsetType::Dynaset);
  return OpenTimecards(path).OpenRecordset(query, RecordsetType::Dynaset);
}

}  // namespace

Value DomainFunc(const std::string& Domain, const std::string& FieldExpr,
                 const std::string& Criteria, const std::string& Aggregate) {
  constexpr SilentTail statement{PrinModule, "DomainFunc"};
  const Selected selected = SelectTable(Domain);
  const std::string file = DataPath + kPathSeparator + selected.Table;
  bool there = false;
  statement(12010, [&] { there = Exist(file + (selected.InStore ? ".mdb" : DbaseExt)); });
  if (!there) return 0;

  const std::string from = selected.InStore ? "[OstrelPr]" : selected.Table;
  const std::string query =
      "SELECT " + Aggregate + "(" + FieldExpr + ") as X from " + from + WhereClause(Criteria);
  Value result = 0;
  statement(12020, [&] {
    const Recordset answer = Ask(selected, file, query);
    if (answer.Bof() && answer.Eof()) return;
    Value found = answer["X"];
    if (!found.IsNull()) result = std::move(found);
  });
  return result;
}

std::string DomainList(const std::string& Domain, const std::string& FieldExpr,
                       const std::string& Criteria, std::string& NotList, std::int32_t& ListCount) {
  constexpr SilentTail statement{PrinModule, "DomainList"};
  NotList.clear();
  ListCount = 0;
  const bool inStore = Domain.find(' ') != std::string::npos && ContainsText(Domain, "app");
  const std::string from = inStore ? "[OstrelPr]" : Domain + ClientNumb;
  Recordset rows;
  statement(12110, [&] {
    rows = (inStore ? PrinDb : DescDb)
               .OpenRecordset("SELECT Distinct " + FieldExpr + " FROM " + from + " " + Criteria +
                                  " Order by " + FieldExpr,
                              RecordsetType::Dynaset);
  });
  if (!rows) return {};

  std::vector<std::string> values;
  statement(12120, [&] {
    for (; !rows.Eof(); rows.MoveNext()) {
      const Value value = rows[0];
      values.push_back(value.IsNull() ? std::string() : value.ToText());
    }
  });
  if (values.empty()) return {};
  ListCount = static_cast<std::int32_t>(values.size());
  std::string list = NumberList(values);
  NotList = " Not " + list;
  return list;
}

Totals TotalsOf(const std::string& Criteria) {
  constexpr SilentTail statement{PrinModule, "DomainFunc"};
  Totals totals;
  if (!PrinDb) return totals;  // the view has just tried to open it
  statement(12030, [&] {
    const Recordset answer = PrinDb.OpenRecordset(
        "SELECT Sum(QUANTITY) as Q, Sum(HOURS) as H, Sum(GROSS) as G, Count(EMPL_NUMB) as N "
        "from [OstrelPr]" +
        Criteria);
    totals = {answer["Q"].Get().NumberOrZero(), answer["H"].Get().NumberOrZero(),
              answer["G"].Get().NumberOrZero(), answer["N"].Get().ToLong()};
  });
  return totals;
}

float NumOrZero(const Recordset& recordset, const char* field) noexcept {
  try {
    const Value value = recordset[field];
    if (value.IsNull()) return 0;
    return static_cast<float>(value.IsText() ? NumericPrefix(value.Characters())
                                             : value.ToDouble());
  } catch (const std::exception&) {
    return 0;
  }
}

}  // namespace ostrel
