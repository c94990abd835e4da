// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <vqs/policy.h>
#include "format/policy/packed_policy.h"
#include "src/channel/windows_api.h"
#include "src/policy/store_records.h"

namespace vqs {

/// The control codes of one store.
struct PolicyStoreCodes {
  std::uint32_t read;
  std::uint32_t modify;
};

/// Nothing for a store that does not exist.
std::optional<PolicyStoreCodes> policyStoreCodes(VqsPolicyStore store);

/// What a store request carries; each operation uses the members named for it.
struct PolicyStoreArguments {
  /// read all; the packed policies follow the head in memory
  PolicyReadBuffer* readBuffer = nullptr;
  /// add
  const VqsPackedPolicy* policy = nullptr;
  /// delete
  const std::uint32_t* id = nullptr;
  /// status
  VqsPolicyStatusList* statusList = nullptr;
  /// add, delete and set binary version
  std::uint32_t* driverResult = nullptr;
  /// set binary version: the first word in the low half, the second in the high half
  std::uint64_t version = 0;
};

/// Carries out one operation on one store: VQS_SUCCESS, VQS_REQUEST_FAILED or VQS_INVALID_PARAMETER. Without memory for
/// the request it is VQS_REQUEST_FAILED (compatibility.md: request-memory).
vqsStatus policyStoreRequest(HANDLE handle, std::int32_t operation, VqsPolicyStore store,
                             const PolicyStoreArguments& arguments);

/// Asks for one policy by id or by priority, which the request does not tell apart (compatibility.md: lookup-key). The
/// store is not checked (compatibility.md: lookup-store). The driver answers into the zero-filled destination.
vqsStatus policyLookup(HANDLE handle, std::uint32_t key, VqsPackedPolicy& destination, VqsPolicyStore store);

/// First request of a read: how many policies the store holds.
vqsStatus queryPolicyCount(HANDLE handle, std::uint32_t readCode, PolicyFetchRequest& request);

/// Further requests of a read, with the record of the first: the store's policies in chunks, in store order.
vqsStatus fetchPolicies(HANDLE handle, std::uint32_t readCode, PolicyFetchRequest& request,
                        std::span<VqsPackedPolicy> policies);

}  // namespace vqs
