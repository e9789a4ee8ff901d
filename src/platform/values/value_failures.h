#pragma once

// The failures of reading, converting and computing values, each with its words.

#include "platform/values/failure.h"

namespace ostrel::value_failure {

inline Failure InvalidCall() { return {failure_number::kInvalidCall, "Invalid procedure call"}; }
inline Failure Overflow() { return {failure_number::kOverflow, "Overflow"}; }
inline Failure DivisionByZero() { return {failure_number::kDivisionByZero, "Division by zero"}; }
inline Failure TypeMismatch() { return {failure_number::kTypeMismatch, "Type mismatch"}; }
inline Failure InvalidNull() { return {failure_number::kInvalidNull, "Invalid use of Null"}; }

}  // namespace ostrel::value_failure
