// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "documents/policies/policy_set.h"

namespace tool {

/// A policy in words, for reading: its id, name and description, then its conditions, texts and actions.
std::string renderInWords(const documents::Policy& policy);

/// All of them, an empty line before each.
std::string renderInWords(const documents::PolicySet& policies);

/// The policies with every field, and conditions and actions in words too.
nlohmann::ordered_json policiesAsJson(const documents::PolicySet& policies);

}  // namespace tool
