// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "simulator/model/wire.h"

namespace simulator {

/// What an operation on a store ends with, as it travels back. 1 is left to the library, which gives it to a caller
/// whose request failed.
enum class StoreResult : std::uint32_t { done = 0, alreadyPresent = 2, full = 3, notPresent = 4 };

/// Policies in order of arrival, no two with one id. The caller has checked them.
class PolicyStore {
 public:
  static constexpr std::size_t kCapacity = 400;

  StoreResult add(const PackedPolicy& policy);
  StoreResult remove(std::uint32_t id);
  void reset() { count_ = 0; }

  [[nodiscard]] const PackedPolicy* find(std::uint32_t id) const;
  [[nodiscard]] std::span<const PackedPolicy> policies() const { return {policies_, count_}; }
  [[nodiscard]] std::uint32_t count() const { return count_; }

 private:
  PackedPolicy policies_[kCapacity]{};
  std::uint32_t count_ = 0;
};

}  // namespace simulator
