#pragma once

// What the fuzz targets share. Each is a function Try of any bytes, which ends the process when
// something does not hold.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/values/failure.h"

namespace ostrel {

void Try(std::string_view bytes);

inline void Require(bool holds) {
  if (!holds) std::abort();
}

/// What the call gives, or nothing when it is refused by one of these failures.
template <class Call>
auto Attempt(std::initializer_list<std::int32_t> refusals, Call call)
    -> std::optional<decltype(call())> {
  try {
    return call();
  } catch (const Failure& failure) {
    Require(std::count(refusals.begin(), refusals.end(), failure.Number) > 0);
    Require(!failure.Text.empty());
    return std::nullopt;
  }
}

}  // namespace ostrel

extern "C" [[gnu::used]] inline int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                                           std::size_t size) {
  ostrel::Try({reinterpret_cast<const char*>(data), size});
  return 0;
}
