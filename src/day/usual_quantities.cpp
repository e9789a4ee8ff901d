#include "day/usual_quantities.h"

#include <algorithm>
#include <vector>

namespace ostrel {

namespace {

constexpr std::size_t kFewestLines = 3;
constexpr double kFarAbove = 10;

}  // namespace

UsualQuantities::UsualQuantities(const DayFacts& facts) {
  std::unordered_map<std::string, std::vector<double>> quantities;
  for (const DayLine& line : facts.Lines) {
    if (line.IsWork() && line.Quantity > 0) quantities[UnitKey(line.Unit)].push_back(line.Quantity);
  }
  for (auto& [unit, all] : quantities) {
    if (all.size() < kFewestLines) continue;
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>((all.size() - 1) / 2);
    std::nth_element(all.begin(), middle, all.end());
    medians_[unit] = *middle;
  }
}

std::optional<double> UsualQuantities::Of(std::string_view unit) const {
  const auto found = medians_.find(UnitKey(unit));
  if (found == medians_.end()) return {};
  return found->second;
}

bool UsualQuantities::IsFarAbove(std::string_view unit, double quantity) const {
  const std::optional<double> usual = Of(unit);
  return usual && quantity >= kFarAbove * *usual;
}

}  // namespace ostrel
