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

bool IsMeantFor(const RowChange& change, const std::vector<Value>& now) {
  if (!change.Before) return true;
  auto set = change.Values.begin();
  for (std::size_t i = 0; i < now.size(); ++i) {
    const bool isSet = (change.Fields >> i & 1U) != 0;
    const bool isDone = isSet && now[i] == *set;
    if (isSet) ++set;
    if (!isDone && now[i] != (*change.Before)[i]) return false;
  }
  return true;
}

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
    if (earlier.What != RowChange::Kind::Insert) change.Before = earlier.Before;
    earlier = std::move(change);
  }
}

std::vector<RowChange> ChangeLog::Take() {
  places_.clear();
  return std::exchange(changes_, {});
}

}  // namespace ostrel
