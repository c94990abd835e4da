// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <limits>

namespace bench {

/// The compiler must take the memory for read and written.
inline void keep(const void* memory) { asm volatile("" : : "r"(memory) : "memory"); }

/// Nanoseconds of one call of each side, in the fastest round.
struct Comparison {
  double first = std::numeric_limits<double>::max();
  double second = std::numeric_limits<double>::max();

  [[nodiscard]] double ratio() const { return first / second; }
};

/// The first call, which finds the caches as the other side left them, is not timed.
template <class Work>
double nanosecondsOf(Work& work, std::size_t calls) {
  work();
  const auto start = std::chrono::steady_clock::now();
  for (std::size_t i = 0; i < calls; ++i) work();
  const std::chrono::duration<double, std::nano> passed = std::chrono::steady_clock::now() - start;
  return passed.count() / static_cast<double>(calls);
}

/// So many calls that reading the clock does not matter.
template <class Work>
std::size_t callsOfARound(Work& work) {
  constexpr double kEnough = 200'000;
  std::size_t calls = 2;
  while (nanosecondsOf(work, calls) * static_cast<double>(calls) < kEnough) calls *= 2;
  return calls;
}

inline constexpr int kRounds = 51;

/// Both sides by turns, so that what disturbs the machine disturbs both. The fastest round is the one that was
/// disturbed least.
template <class First, class Second>
Comparison compare(First first, Second second, int rounds = kRounds) {
  const std::size_t firstCalls = callsOfARound(first);
  const std::size_t secondCalls = callsOfARound(second);
  Comparison fastest;
  for (int round = 0; round < rounds; ++round) {
    fastest.first = std::min(fastest.first, nanosecondsOf(first, firstCalls));
    fastest.second = std::min(fastest.second, nanosecondsOf(second, secondCalls));
  }
  return fastest;
}

}  // namespace bench
