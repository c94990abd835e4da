// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string_view>

#include "documents/policies/policy_set.h"

namespace documents {

/// A number of a policy by the name that records and documents have for it.
struct NamedNumber {
  std::string_view name;
  std::uint32_t value;

  auto operator<=>(const NamedNumber&) const = default;
};

/// All of them but the id, in the order of documents.
inline std::array<NamedNumber, 6> numbersOf(const Policy& policy) {
  return {{{"flag0", policy.flag0},
           {"flag1", policy.flag1},
           {"flag2", policy.flag2},
           {"param0", policy.param0},
           {"param1", policy.param1},
           {"param2", policy.param2}}};
}

}  // namespace documents
