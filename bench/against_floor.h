#pragma once

// A benchmark beside the floor it is measured against: what the library alone needs for the same
// work. The result's times_floor is how many times the floor the work takes.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>

namespace ostrel {

inline double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The best of each by turns, so that a busy machine slows both. For benchmarks with UseManualTime.
///   reset  what puts things back before each turn, not timed
inline void AgainstFloor(
    benchmark::State& state, const std::function<void()>& floor, const std::function<void()>& work,
    const std::function<void()>& reset = [] {}) {
  double bestFloor = std::numeric_limits<double>::max();
  double bestWork = bestFloor;
  for ([[maybe_unused]] auto _ : state) {
    reset();
    bestFloor = std::min(bestFloor, SecondsOf(floor));
    reset();
    const double taken = SecondsOf(work);
    bestWork = std::min(bestWork, taken);
    state.SetIterationTime(taken);
  }
  state.counters["floor_ms"] = bestFloor * 1000;
  state.counters["times_floor"] = bestWork / bestFloor;
}

}  // namespace ostrel
