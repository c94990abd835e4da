// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "documents/compare/difference.h"
#include "tool/policies/any_policies.h"

namespace tool {

/// What of a difference counts.
struct DifferenceScope {
  /// Another order of the same policies is a difference; otherwise it is only mentioned.
  bool withOrder = true;
};

/// A difference, less what one of the sides cannot have: a store without a version differs in none.
documents::Difference compare(const AnyPolicies& first, const AnyPolicies& second);

/// True when nothing that counts differs.
bool isSame(const documents::Difference& difference, const DifferenceScope& scope);

/// In what the second differs from the first, in words, a line a field; or that they say the same.
std::string renderDifference(const AnyPolicies& first, const AnyPolicies& second,
                             const documents::Difference& difference, const DifferenceScope& scope);

nlohmann::ordered_json differenceAsJson(const AnyPolicies& first, const AnyPolicies& second,
                                        const documents::Difference& difference, const DifferenceScope& scope);

}  // namespace tool
