#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/values/failure.h"

namespace ostrel {

/// Number of the failure that a call ends in, 0 where there is none.
inline int NumberOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Failure& failure) {
    EXPECT_FALSE(failure.Text.empty() || failure.Text.front() == ':') << "no words before the path";
    return failure.Number;
  }
  return 0;
}

/// What a call answers, or the number of its failure: "!3075".
inline std::string OutcomeOf(const std::function<std::string()>& call) {
  std::string answer;
  const int number = NumberOf([&] { answer = call(); });
  return number == 0 ? answer : "!" + std::to_string(number);
}

}  // namespace ostrel
