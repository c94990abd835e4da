// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/store_plan.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace tool {
namespace {

using Policies = std::span<const documents::Policy>;
using Kind = StoreRequest::Kind;

/// What becomes of the policies on both sides.
class Planner {
 public:
  Planner(Policies held, Policies wanted) : held_{held}, wanted_{wanted}, isKept_(wanted.size(), false) {
    for (std::size_t i = 0; i < held.size(); ++i) heldIds_[held[i].id] = i;
    for (const auto& policy : wanted) wantedIds_.insert(policy.id);
  }

  /// Keeps every policy that is there already.
  void keepAll() {
    for (std::size_t i = 0; i < wanted_.size(); ++i) isKept_[i] = placeOf(wanted_[i]).has_value();
  }

  /// Keeps the longest beginning of the wanted policies that stands in the store in this order, whatever is between.
  void keepBeginning() {
    std::optional<std::size_t> before;
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
      const auto place = placeOf(wanted_[i]);
      if (!place || place < before) return;
      isKept_[i] = true;
      before = place;
    }
  }

  [[nodiscard]] std::vector<StoreRequest> requests() const {
    auto requests = changes();
    if (requests.size() > 1 + wanted_.size()) requests = startingAnew();
    return requests;
  }

 private:
  /// The place in the store of a wanted policy that is there already.
  [[nodiscard]] std::optional<std::size_t> placeOf(const documents::Policy& policy) const {
    const auto found = heldIds_.find(policy.id);
    return found != heldIds_.end() && held_[found->second] == policy ? std::optional{found->second} : std::nullopt;
  }

  /// What is not wanted at all goes first, so that there is room for the rest even in a full store.
  [[nodiscard]] std::vector<StoreRequest> changes() const {
    std::vector<StoreRequest> requests;
    for (std::size_t i = 0; i < held_.size(); ++i)
      if (!wantedIds_.contains(held_[i].id) || heldIds_.at(held_[i].id) != i)
        requests.push_back({.kind = Kind::kDelete, .id = held_[i].id});
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
      if (isKept_[i]) continue;
      const std::uint32_t id = wanted_[i].id;
      if (heldIds_.contains(id)) requests.push_back({.kind = Kind::kDelete, .id = id});
      requests.push_back({.kind = Kind::kAdd, .id = id, .index = i});
    }
    return requests;
  }

  [[nodiscard]] std::vector<StoreRequest> startingAnew() const {
    std::vector<StoreRequest> requests = {{.kind = Kind::kReset}};
    for (std::size_t i = 0; i < wanted_.size(); ++i)
      requests.push_back({.kind = Kind::kAdd, .id = wanted_[i].id, .index = i});
    return requests;
  }

  Policies held_;
  Policies wanted_;
  /// Where the last policy of each id is, the only one that can be kept: a delete takes the first.
  std::unordered_map<std::uint32_t, std::size_t> heldIds_;
  std::unordered_set<std::uint32_t> wantedIds_;
  std::vector<bool> isKept_;
};

}  // namespace

std::vector<StoreRequest> planStore(Policies held, Policies wanted, PlanOptions options) {
  Planner planner{held, wanted};
  if (options.withOrder)
    planner.keepBeginning();
  else
    planner.keepAll();
  auto requests = planner.requests();
  if (options.setsVersion) requests.push_back({.kind = Kind::kSetVersion});
  return requests;
}

std::vector<documents::Policy> carriedOut(std::vector<documents::Policy> held, Policies wanted,
                                          std::span<const StoreRequest> requests) {
  for (const auto& [kind, id, index] : requests) {
    if (kind == Kind::kReset) held.clear();
    if (kind == Kind::kAdd) held.push_back(wanted[index]);
    if (kind != Kind::kDelete) continue;
    const auto found = std::ranges::find(held, id, &documents::Policy::id);
    if (found != held.end()) held.erase(found);
  }
  return held;
}

}  // namespace tool
