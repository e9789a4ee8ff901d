#pragma once

// Sums and counts that are asked one after another over the same lines, as the totals behind every
// view are. From the second time on they are answered together, by one pass over the lines instead
// of one for each. What is kept is never older than the store: any change to it, also by another
// program, empties the memo.

#include <cstdint>
#include <string>
#include <vector>

#include "platform/database/sqlite_connection.h"
#include "platform/database/store_query.h"

namespace ostrel {

class TotalsMemo {
 public:
  explicit TotalsMemo(SqliteConnection& connection) : connection_(connection) {}

  /// The answer to a Sum or a Count: Double, Long, or Null over no rows.
  ///   changes  what SharedCommit::Changes says now
  Value Answer(const StoreQuestion& question, std::uint64_t changes);

 private:
  struct Total {
    std::string Expression;  // "sum(HOURS)"
    Value Answer;
  };
  /// Over which lines of which state of the store.
  struct Scope {
    std::string Rows;  // the question's text behind its expression
    std::vector<Value> Parameters;
    std::uint64_t Own = 0;       // changes through this connection
    std::int64_t OfOthers = -1;  // SQLite's count of commits by others
    friend bool operator==(const Scope&, const Scope&) = default;
  };
  const Total* Find(const std::string& expression) const;
  std::vector<Total> Ask(const std::vector<Total>& totals, const Scope& scope);

  SqliteConnection& connection_;
  Scope scope_;
  std::vector<Total> totals_;  // asked over scope_
};

}  // namespace ostrel
