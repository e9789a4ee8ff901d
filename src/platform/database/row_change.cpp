#include "platform/database/row_change.h"

#include <utility>

namespace ostrel {
namespace {

/// The fields of both, the later value where both set one.
void AddFields(RowChange& earlier, RowChange&& later) {
  std::vector<Value> values;
  auto old = earlier.Values.begin();
  auto fresh = later.Values.begin();
  for (std::uint32_t bit = 1; bit != 0; bit <<= 1U) {
    const bool wasSet = (earlier.Fields & bit) != 0;
    const bool isSet = (later.Fields & bit) != 0;
    if (isSet) values.push_back(std::move(*fresh++));
    if (wasSet && !isSet) values.push_back(std::move(*old));
    if (wasSet) ++old;
  }
  earlier.Values = std::move(values);
  earlier.Fields |= later.Fields;
}

}  // namespace

void ChangeLog::Add(RowChange change) {
  const auto [place, isNew] = places_.try_emplace(change.Row, changes_.size());
  if (isNew) {
    changes_.push_back(std::move(change));
    return;
  }
  RowChange& earlier = changes_[place->second];
  if (change.What == RowChange::Kind::Update) {
    AddFields(earlier, std::move(change));
  } else {
    earlier = std::move(change);
  }
}

std::vector<RowChange> ChangeLog::Take() {
  places_.clear();
  return std::exchange(changes_, {});
}

}  // namespace ostrel
