// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "documents/policies/policy_set.h"

namespace tool {

/// A request that changes a store.
struct StoreRequest {
  enum class Kind : std::uint8_t { kReset, kDelete, kAdd, kSetVersion } kind = Kind::kReset;
  /// of the policy that is deleted or added
  std::uint32_t id = 0;
  /// where the policy that is added stands among those that are wanted
  std::size_t index = 0;

  bool operator==(const StoreRequest&) const = default;
};

struct PlanOptions {
  /// The policies have to stand in their order in the end.
  bool withOrder = false;
  /// The version has to be set.
  bool setsVersion = false;
};

/// The fewest requests after which a store holds the wanted policies and no others. A store appends what is added,
/// refuses an id that it holds, and deletes the first policy of an id. It may hold an id more than once, the wanted
/// policies may not. Where a reset takes as many requests as deletes do, it is left out.
///
/// What is not wanted goes first, and a policy that is replaced is out of the store between two requests only.
std::vector<StoreRequest> planStore(std::span<const documents::Policy> held, std::span<const documents::Policy> wanted,
                                    PlanOptions options);

/// What a store holds when these requests have been carried out.
std::vector<documents::Policy> carriedOut(std::vector<documents::Policy> held,
                                          std::span<const documents::Policy> wanted,
                                          std::span<const StoreRequest> requests);

}  // namespace tool
