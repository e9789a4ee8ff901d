#pragma once

// What every command that works on one day says when it cannot: the date box holds no single day, or
// nobody has clocked in on it.

#include <cstdint>

#include "frame/failure_reporting.h"

namespace ostrel {

/// Each beeps and shows its box as statement `line` of the caller's tail.
void SayNoDay(const FailureTail& statement, std::int32_t line);
void SayNobodyClockedIn(const FailureTail& statement, std::int32_t line);

}  // namespace ostrel
