// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <span>
#include <string>

#include <vqs/policy.h>

namespace tool {

/// One line a policy, in columns, under a heading.
std::string renderTable(std::span<const VqsPolicyV2> policies);

/// Every field of every policy, under the names of the interface.
nlohmann::ordered_json toJson(std::span<const VqsPolicyV2> policies);

/// A JSON document as it is printed.
std::string renderJson(const nlohmann::ordered_json& document);

}  // namespace tool
