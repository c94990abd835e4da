// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>
#include <span>
#include <string>

#include "documents/compare/difference.h"
#include "tool/policies/any_policies.h"
#include "tool/policies/difference_text.h"
#include "tool/policies/store_plan.h"

namespace tool {

/// "1 request", "4 requests".
std::string countOfRequests(std::size_t count);

/// "delete 120, add 120, add 140, set version 3.41". Of many requests only how many there are of each.
std::string describeRequests(std::span<const StoreRequest> requests, const documents::PolicySet& wanted);

nlohmann::ordered_json requestsAsJson(std::span<const StoreRequest> requests, const documents::PolicySet& wanted);

/// " (order: 10 will be last; --order to rewrite 16)": what is not as it is wanted when the requests have been carried
/// out, and how many policies would have to be added for it. Empty when the order is right.
std::string describeOrder(const documents::Difference& afterwards, std::size_t heldAfterwards, std::size_t rewritten);

/// "the Asm store holds 15 policies now: 140 is missing, 7 is not in laptop.json, its version is 3.40": in what a store
/// differs from what is wanted.
std::string describeState(const AnyPolicies& wanted, const AnyPolicies& store, const documents::Difference& difference,
                          const DifferenceScope& scope);

}  // namespace tool
