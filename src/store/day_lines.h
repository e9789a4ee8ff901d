#pragma once

// The lines of one day, employee by employee. While the hours of a day are worked out, each employee's
// lines are wanted in turn; asking the store 200 times over would be most of the work, so the day is
// looked through once and sorted out by employee.

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/database/database.h"

namespace ostrel {

class DayLines {
 public:
  /// REQUIRES that nobody adds or deletes lines of the day, or gives one to another employee or
  /// another time, while `store` is held. When it has been let go, for a box say, the day is looked
  /// through again.
  ///   where  where text of the day, " where INT(ETIME) = #06/14/04#"
  DayLines(const Database& store, std::string where) : store_(store), where_(std::move(where)) {}

  /// An employee's lines of the day in the order of ETIME, among equals in the order of entry.
  ///   throws  what OpenRecordset throws
  Recordset Of(std::int32_t EmplNumb);

 private:
  void LookThrough();

  const Database& store_;
  std::string where_;
  std::weak_ptr<const void> hold_;
  std::unordered_map<float, std::vector<Bookmark>> lines_;
};

}  // namespace ostrel
