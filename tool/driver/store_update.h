// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>

#include "documents/policies/policy_set.h"
#include "tool/driver/driver_session.h"
#include "tool/driver/stores.h"
#include "tool/policies/store_plan.h"

namespace tool {

/// How far requests got.
struct Sending {
  /// requests that the driver has carried out
  std::size_t carriedOut = 0;
  /// what became of the next one: "adding 140 \"Dark room\" failed: the driver refused the request"; empty when all
  /// were carried out
  std::string failure;
};

/// Sends the requests of a plan for these policies, one after the other, up to the first that is not carried out. Asked
/// before each of them, `isInterrupted` can end it too.
Sending sendRequests(const Session& session, const Store& store, const documents::PolicySet& wanted,
                     std::span<const StoreRequest> requests, const std::function<bool()>& isInterrupted);

/// `140 "Dark room"`, as messages call a policy.
std::string called(const documents::Policy& policy);

}  // namespace tool
