// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

#include <vqs/vqs.h>

// What the client programs of these tests have in common.

namespace test {

/// A client whose expectation does not hold ends there and then, with 9.
inline void demand(bool holds, const char* what) {
  if (holds) return;
  static_cast<void>(std::fprintf(stderr, "it does not hold that %s\n", what));
  _exit(9);
}

inline VqsPolicyV0 policyOf(std::uint32_t id) {
  VqsPolicyV0 policy{};
  std::strcpy(policy.name, "policy");
  policy.id = id;
  return policy;
}

}  // namespace test
