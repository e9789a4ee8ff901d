// Queries with anything typed into them: the reader takes them or refuses them with a failure of its
// own, and what it takes becomes a question with every literal in its place.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/database/sql_dialect.h"
#include "platform/database/store_query.h"
#include "platform/failure.h"

namespace ostrel {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void AskStore(const Query& query) {
  try {
    const StoreQuestion question = QuestionFor(query);
    Require(question.Sql.find_first_of("'\"#;[") == question.Sql.npos);
  } catch (const Failure& failure) {
    Require(failure.Number == failure_number::kNoSuchTable ||
            failure.Number == failure_number::kTooFewParameters ||
            failure.Number == failure_number::kFieldConversion);
  }
}

template <class Read>
void ReadOrRefuse(Read read) {
  try {
    read();
  } catch (const Failure& failure) {
    Require(failure.Number == failure_number::kQuerySyntax);
  }
}

}  // namespace
}  // namespace ostrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view sql(reinterpret_cast<const char*>(data), size);
  ostrel::ReadOrRefuse([&] {
    const ostrel::Query query = ostrel::ReadQuery(sql);
    if (query.Form != ostrel::QueryForm::Table) ostrel::AskStore(query);
  });
  ostrel::ReadOrRefuse([&] { ostrel::ReadAction(sql); });
  return 0;
}
