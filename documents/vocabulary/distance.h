// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

namespace documents {

/// How many characters have to be added, dropped, changed or swapped with their neighbour to get from one to the other;
/// case counts, so that names are folded first.
std::size_t editDistance(std::string_view from, std::string_view to);

/// The most changes with which something still counts as a slip of this name: it has to share more with it than it
/// changes.
constexpr std::size_t mostChanges(std::string_view name) { return name.size() < 6 ? 1 : name.size() / 3; }

}  // namespace documents
