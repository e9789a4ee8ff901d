#pragma once

// Changes of rows as data, so that they can be made again when the engine has undone them.

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/database/row_types.h"
#include "platform/values/value.h"

namespace ostrel {

/// All fields of a row as read, shared by whoever keeps them; none where the row is not there.
using RowFields = std::shared_ptr<const std::vector<Value>>;

/// A change of one row.
struct RowChange {
  enum class Kind { Insert, Update, Delete };
  Kind What = Kind::Insert;
  Bookmark Row = 0;           ///< 0: a new row that has no id yet
  std::uint32_t Fields = 0;   ///< bit n: field n is set
  std::vector<Value> Values;  ///< of the fields set, in their order
  RowFields Before =
      {};  ///< the row that is changed or deleted, as it was read; none: whatever it is
};

/// Whether a row as it is now is the one that a change is meant for: the row it was made from, or that
/// row with the change in it, since a commit that failed may have reached the file.
bool IsMeantFor(const RowChange& change, const std::vector<Value>& now);

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
