// Queries with anything typed into them: the reader takes them or refuses them with a failure of its
// own, and what it takes becomes a question with every literal in its place.

#include "fuzz.h"
#include "platform/database/sql_dialect.h"
#include "platform/database/store_query.h"

namespace ostrel {

const TableDefinition kTable{"OstrelPr",
                             {{"EMPL_NUMB", FieldType::Single},
                              {"ETIME", FieldType::Date},
                              {"EVENT_TYPE", FieldType::Text, 1},
                              {"RATE", FieldType::Double}}};

void Try(std::string_view sql) {
  using namespace failure_number;
  const auto query = Attempt({kQuerySyntax}, [&] { return ReadQuery(sql); });
  if (query && query->Form != QueryForm::Table) {
    const auto question = Attempt({kNoSuchTable, kTooFewParameters, kFieldConversion},
                                  [&] { return QuestionFor(kTable, *query); });
    Require(!question || question->Sql.find_first_of("'\"#;[") == sql.npos);
  }
  Attempt({kQuerySyntax}, [&] { return ReadAction(sql); });
}

}  // namespace ostrel
