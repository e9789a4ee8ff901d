#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "platform/failure.h"

namespace ostrel {

/// Number of the failure that a call ends in, 0 where there is none.
inline int NumberOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Failure& failure) {
    EXPECT_FALSE(failure.Text.empty());
    return failure.Number;
  }
  return 0;
}

}  // namespace ostrel
