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

// The requests of a store: VQS_SUCCESS, VQS_REQUEST_FAILED, or VQS_INVALID_PARAMETER for a store that does not exist.
// Without memory for a request it is VQS_REQUEST_FAILED (compatibility.md: request-memory).

/// Reads the count, or all policies, into a buffer that has room for its count; they follow it in memory. A store that
/// holds more is VQS_INVALID_PARAMETER.
vqsStatus readStore(HANDLE handle, VqsPolicyStore store, PolicyReadBuffer& buffer);

/// Adds the policy that stands in an otherwise empty request, which holds the driver's answer afterwards.
vqsStatus addToStore(HANDLE handle, VqsPolicyStore store, PolicyStoreRequest& request, std::uint32_t& driverResult);

/// The driver's result goes straight to the caller, who may have no place for it.
vqsStatus deleteFromStore(HANDLE handle, VqsPolicyStore store, std::uint32_t id, std::uint32_t* driverResult);

/// The same with an empty request of the caller's, which is empty again afterwards.
vqsStatus deleteFromStore(HANDLE handle, VqsPolicyStore store, std::uint32_t id, std::uint32_t* driverResult,
                          PolicyStoreRequest& request);

vqsStatus resetStore(HANDLE handle, VqsPolicyStore store);

/// The number of entries, or the entries, for which the caller's array is trusted to have room.
vqsStatus readStoreStatus(HANDLE handle, VqsPolicyStore store, VqsPolicyStatusList& list);

/// Only the Asm store has one.
vqsStatus setBinaryVersion(HANDLE handle, std::uint32_t word1, std::uint32_t word2, std::uint32_t& driverResult);

/// Asks for one policy by id or by priority, which the request does not tell apart (compatibility.md: lookup-key). The
/// store is not checked (compatibility.md: lookup-store). The driver answers into the zero-filled destination.
vqsStatus policyLookup(HANDLE handle, std::uint32_t key, PackedPolicy& destination, VqsPolicyStore store);

/// First request of a read: how many policies the store holds.
vqsStatus queryPolicyCount(HANDLE handle, std::uint32_t readCode, PolicyFetchRequest& request);

/// Further requests of a read, with the record of the first: the store's policies in chunks, in store order.
vqsStatus fetchPolicies(HANDLE handle, std::uint32_t readCode, PolicyFetchRequest& request,
                        std::span<PackedPolicy> policies);

}  // namespace vqs
