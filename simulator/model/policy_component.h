// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/model/policy_store.h"
#include "simulator/model/request.h"

namespace simulator {

enum StoreIndex : std::uint32_t { kStorePb = 0, kStoreAsm = 1, kStoreBalanceProfile = 2, kStoreCount = 3 };

/// The version of the Asm policy binary; each word holds a 16-bit number.
struct BinaryVersion {
  std::uint32_t word1;
  std::uint32_t word2;

  friend bool operator==(const BinaryVersion&, const BinaryVersion&) = default;
};

inline constexpr std::uint32_t kHighestVersionWord = 0xFFFF;

/// The three policy stores and the version pair of the Asm store.
class PolicyComponent {
 public:
  Answer read(StoreIndex store, const Request& request) const;
  Answer modify(StoreIndex store, const Request& request);
  Answer lookup(const Request& request) const;

  [[nodiscard]] PolicyStore& store(std::size_t index) { return stores_[index]; }
  [[nodiscard]] const PolicyStore& store(std::size_t index) const { return stores_[index]; }
  [[nodiscard]] BinaryVersion asmVersion() const { return asmVersion_; }
  void setAsmVersion(BinaryVersion version) { asmVersion_ = version; }

  /// False for stores and a version that no sequence of requests can lead to.
  [[nodiscard]] bool isSound() const;

 private:
  Answer add(PolicyStore& store, const Request& request);
  Answer setVersion(const Request& request);
  Answer getVersion(const Request& request) const;

  PolicyStore stores_[kStoreCount]{};
  BinaryVersion asmVersion_{};
  /// The policy of the request at hand; too large for the stack of a kernel.
  PackedPolicy arriving_{};
};

}  // namespace simulator
