// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <iosfwd>

namespace test {

/// What can be counted of a call.
struct Costs {
  int requests = 0;
  /// of the library, not of the simulated driver
  int allocations = 0;
  int opens = 0;
  int seeks = 0;
  int tells = 0;
  int reads = 0;
  int writes = 0;

  bool operator==(const Costs&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Costs& costs);

Costs costsOf(const std::function<void()>& call);

/// The most bytes that a call has allocated at once, driver included.
unsigned long long peakBytesOf(const std::function<void()>& call);

}  // namespace test
