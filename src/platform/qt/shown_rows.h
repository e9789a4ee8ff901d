#pragma once

// The rows as the grid last showed them. Painting asks here: a row is read afresh each time, and
// where the store cannot be read just now, because another program holds it, the row stays on the
// screen as it was. One failure is enough for a painting, so that it does not wait for each row.

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "platform/database/recordset.h"

namespace ostrel {

class ShownRows {
 public:
  /// Call it before each painting: the store is asked again.
  void Begin();

  /// Fields of a row; empty where it has been deleted, or could never be read.
  const std::vector<Value>& Row(const Recordset& rows, std::size_t position);

  /// Whether a row of this painting could not be read.
  bool Missed() const { return missed_; }

 private:
  struct Shown {
    std::vector<Value> Fields;
    unsigned Painting = 0;
  };
  std::unordered_map<Bookmark, Shown> shown_;
  unsigned painting_ = 0;
  bool missed_ = false;
};

}  // namespace ostrel
