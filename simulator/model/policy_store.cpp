// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/policy_store.h"

#include <algorithm>
#include <cstring>

namespace simulator {

StoreResult PolicyStore::add(const PackedPolicy& policy) {
  if (find(policy.id) != nullptr) return StoreResult::alreadyPresent;
  if (count_ == kCapacity) return StoreResult::full;
  policies_[count_++] = policy;
  return StoreResult::done;
}

StoreResult PolicyStore::remove(std::uint32_t id) {
  const PackedPolicy* found = find(id);
  if (found == nullptr) return StoreResult::notPresent;
  const auto position = static_cast<std::uint32_t>(found - policies_);
  --count_;
  std::memmove(policies_ + position, policies_ + position + 1, (count_ - position) * sizeof(PackedPolicy));
  return StoreResult::done;
}

const PackedPolicy* PolicyStore::find(std::uint32_t id) const {
  const auto held = policies();
  const auto found = std::ranges::find(held, id, &PackedPolicy::id);
  return found == held.end() ? nullptr : &*found;
}

}  // namespace simulator
