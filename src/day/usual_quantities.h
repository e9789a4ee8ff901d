#pragma once

// The day's usual quantity of each description: what a slip of the hand, 2400 for 240, is seen by.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "day/day_facts.h"

namespace ostrel {

class UsualQuantities {
 public:
  UsualQuantities() = default;
  explicit UsualQuantities(const DayFacts& facts);

  /// The day's median of a description; nothing while too few lines have it to speak of a usual one.
  std::optional<double> Of(std::string_view unit) const;

  /// Whether a quantity is ten times the usual one, or more.
  bool IsFarAbove(std::string_view unit, double quantity) const;

 private:
  std::unordered_map<std::string, double> medians_;  // by UnitKey
};

}  // namespace ostrel
