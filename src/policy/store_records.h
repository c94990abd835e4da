// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "format/policy/packed_policy.h"

namespace vqs {

/// What a store is asked to do. Reading goes to the store's read code, all else to its modify code.
enum PolicyStoreOperation : std::int32_t {
  kStoreReadAll = 0,
  kStoreAdd = 1,
  /// an older number of add, sent as add
  kStoreAddAlias = 2,
  kStoreReset = 3,
  kStoreStatus = 4,
  kStoreDelete = 5,
  kStoreSetBinaryVersion = 6,
  /// reads the version words back; only the policy binary writer sends it
  kStoreGetBinaryVersion = 7
};

struct PolicyStoreRequest {
  std::uint32_t operation;
  /// add: the whole policy; delete: only its id is set
  VqsPackedPolicy policy;
  std::uint32_t policyCount;
  /// in the answer: the driver's own result
  std::uint32_t result;
  std::uint8_t countOnly;
  std::uint8_t reserved0[3];
  std::uint32_t versionWord1;
  std::uint32_t versionWord2;
  /// where the status entries begin in a longer request
  std::uint8_t statusEntries[4];
};
static_assert(sizeof(PolicyStoreRequest) == 4000);
static_assert(offsetof(PolicyStoreRequest, operation) == 0);
static_assert(offsetof(PolicyStoreRequest, policy) == 4);
static_assert(offsetof(PolicyStoreRequest, policy) + offsetof(VqsPackedPolicy, id) == 168);
static_assert(offsetof(PolicyStoreRequest, policyCount) == 3976);
static_assert(offsetof(PolicyStoreRequest, result) == 3980);
static_assert(offsetof(PolicyStoreRequest, countOnly) == 3984);
static_assert(offsetof(PolicyStoreRequest, versionWord1) == 3988);
static_assert(offsetof(PolicyStoreRequest, versionWord2) == 3992);
static_assert(offsetof(PolicyStoreRequest, statusEntries) == 3996);

/// One entry of the answer to a status request; the entries begin at its field statusEntries.
struct PolicyStatusEntry {
  std::uint32_t statusValue;
  std::uint8_t statusFlagA;
  std::uint8_t statusFlagB;
  std::uint8_t reserved0[2];
  std::uint32_t statusValue2;
  char name[128];
};
static_assert(sizeof(PolicyStatusEntry) == 140);
static_assert(offsetof(PolicyStatusEntry, statusFlagA) == 4);
static_assert(offsetof(PolicyStatusEntry, statusFlagB) == 5);
static_assert(offsetof(PolicyStatusEntry, statusValue2) == 8);
static_assert(offsetof(PolicyStatusEntry, name) == 12);

/// How many policies the driver returns at a time.
inline constexpr std::size_t kPoliciesPerChunk = 5;

struct PolicyFetchRequest {
  /// 1: report the number of policies; 0: return one chunk
  std::uint8_t countQuery;
  std::uint8_t reserved0[3];
  std::uint32_t policyCount;
  std::uint32_t chunkIndex;
  VqsPackedPolicy policies[kPoliciesPerChunk];
};
static_assert(sizeof(PolicyFetchRequest) == 19872);
static_assert(offsetof(PolicyFetchRequest, countQuery) == 0);
static_assert(offsetof(PolicyFetchRequest, policyCount) == 4);
static_assert(offsetof(PolicyFetchRequest, chunkIndex) == 8);
static_assert(offsetof(PolicyFetchRequest, policies) == 12);

struct PolicyLookupRequest {
  std::uint32_t reserved0;
  /// an id or a priority; nothing in the request says which
  std::uint32_t key;
  std::uint8_t reserved1[3972];
  std::uint32_t store;
};
static_assert(sizeof(PolicyLookupRequest) == 3984);
static_assert(offsetof(PolicyLookupRequest, key) == 4);
static_assert(offsetof(PolicyLookupRequest, store) == 3980);

/// The head of the library's own buffer for a read of all policies; the packed policies follow it.
struct PolicyReadBuffer {
  std::uint8_t countOnly;
  std::uint8_t reserved0[3];
  /// before the read: the capacity; after it: the store's count
  std::uint32_t count;
};
static_assert(sizeof(PolicyReadBuffer) == 8);
static_assert(offsetof(PolicyReadBuffer, count) == 4);

}  // namespace vqs
