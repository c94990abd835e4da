// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "simulator/model/wire.h"

namespace simulator {

/// What an operation on a store ends with, as it travels back. 1 is left to the library, which gives it to a caller
/// whose request failed.
enum class StoreResult : std::uint32_t { done = 0, alreadyPresent = 2, full = 3, notPresent = 4 };

/// Policies in order of arrival, no two with one id. The caller has checked them.
///
/// A store may lie in memory that outlives its process, which can be killed at any point: each operation shows with the
/// one write that ends it, or not at all. Policies therefore keep their places, and what changes is the list of them.
class PolicyStore {
 public:
  static constexpr std::uint32_t kCapacity = 400;

  StoreResult add(const PackedPolicy& policy);
  StoreResult remove(std::uint32_t id);
  void reset();

  [[nodiscard]] const PackedPolicy* find(std::uint32_t id) const;
  /// The policy at a position below count.
  [[nodiscard]] const PackedPolicy& policy(std::uint32_t position) const { return places_[order().placeOf(position)]; }
  [[nodiscard]] std::uint32_t count() const { return order().count; }

  /// False for a store that no sequence of requests can lead to.
  [[nodiscard]] bool isSound() const;

 private:
  /// Which places hold the policies, in order of arrival; the free places follow.
  struct Order {
    std::uint32_t count;
    /// each as its difference from its own index, so that zero bytes are an empty store
    std::uint16_t differences[kCapacity];

    [[nodiscard]] std::uint32_t placeOf(std::uint32_t position) const {
      return (position + differences[position]) % kCapacity;
    }
    void setPlace(std::uint32_t position, std::uint32_t place) {
      differences[position] = static_cast<std::uint16_t>((place + kCapacity - position) % kCapacity);
    }
    [[nodiscard]] bool isSound() const;
  };

  [[nodiscard]] const Order& order() const { return orders_[current_ & 1]; }
  /// A copy of the list to be changed.
  Order& draft();
  /// Puts the draft in force.
  void commit();

  PackedPolicy places_[kCapacity]{};
  Order orders_[2]{};
  std::uint32_t current_ = 0;
};

}  // namespace simulator
