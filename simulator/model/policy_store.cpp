// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/policy_store.h"

#include <algorithm>
#include <atomic>

namespace simulator {

StoreResult PolicyStore::add(const PackedPolicy& policy) {
  if (find(policy.id) != nullptr) return StoreResult::kAlreadyPresent;
  if (count() == kCapacity) return StoreResult::kFull;
  places_[order().placeOf(count())] = policy;
  ++draft().count;
  commit();
  return StoreResult::kDone;
}

StoreResult PolicyStore::remove(std::uint32_t id) {
  std::uint32_t position = 0;
  while (position < count() && policy(position).id != id) ++position;
  if (position == count()) return StoreResult::kNotPresent;
  Order& changed = draft();
  const std::uint32_t freed = changed.placeOf(position);
  for (--changed.count; position < changed.count; ++position) changed.setPlace(position, changed.placeOf(position + 1));
  changed.setPlace(changed.count, freed);
  commit();
  return StoreResult::kDone;
}

void PolicyStore::reset() {
  draft().count = 0;
  commit();
}

const PackedPolicy* PolicyStore::find(std::uint32_t id) const {
  for (std::uint32_t position = 0; position < count(); ++position)
    if (policy(position).id == id) return &policy(position);
  return nullptr;
}

bool PolicyStore::isSound() const { return current_ <= 1 && order().isSound(); }

bool PolicyStore::Order::isSound() const {
  bool isTaken[kCapacity] = {};
  for (std::uint32_t position = 0; position < kCapacity; ++position) {
    if (differences[position] >= kCapacity) return false;
    bool& taken = isTaken[placeOf(position)];
    if (taken) return false;
    taken = true;
  }
  return count <= kCapacity;
}

PolicyStore::Order& PolicyStore::draft() { return orders_[~current_ & 1] = order(); }

void PolicyStore::commit() {
  // A process that is killed leaves what it has written: the order of its writes is all that matters.
  std::atomic_signal_fence(std::memory_order_release);
  current_ = ~current_ & 1;
}

}  // namespace simulator
