#pragma once

// What random hands can do, one act a step. A step is data of its own, so that steps can be dropped
// from a hand and the rest played again.

#include <string>
#include <vector>

#include "battery/hands_harm.h"
#include "battery/hands_operator.h"

namespace ostrel {

struct Step {
  std::size_t Act = 0;
  unsigned Luck = 0;  ///< of texts, rows, answers and harm
  HarmKind Harm = HarmKind::None;
  bool Rude = false;  ///< texts are whatever hands can paste
};
using Hand = std::vector<Step>;

/// The hand of a seed. One in five is rude.
Hand DrawHand(unsigned seed, std::size_t steps);

std::string NameOf(const Step& step);

/// Carries a step out.
///   returns  whether the program still runs
bool Carry(Operator& hands, const Step& step);

}  // namespace ostrel
