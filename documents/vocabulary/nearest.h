// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace documents {

/// Those of some names that are nearest to what was written, nearest first; at most three, none when none is near.
std::vector<std::string_view> nearestOf(std::span<const std::string_view> names, std::string_view written);

}  // namespace documents
