#pragma once

// Changes of rows as data, so that they can be made again when the engine has undone them.

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/database/recordset.h"

namespace ostrel {

/// A change of one row.
struct RowChange {
  enum class Kind { Insert, Update, Delete };
  Kind What = Kind::Insert;
  Bookmark Row = 0;           ///< 0: a new row that has no id yet
  std::uint32_t Fields = 0;   ///< bit n: field n is set
  std::vector<Value> Values;  ///< of the fields set, in their order
};

/// What has been done to rows since a commit began: one change a row, since making it again must
/// end with the row as it was left, wherever it starts from.
class ChangeLog {
 public:
  void Add(RowChange change);
  bool Empty() const { return changes_.empty(); }
  std::vector<RowChange> Take();
  void Clear() { Take(); }

 private:
  std::vector<RowChange> changes_;
  std::unordered_map<Bookmark, std::size_t> places_;
};

}  // namespace ostrel
