// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace documents {

/// A regular expression, without anchors, for the decimal numbers of a range that have no leading zeros.
std::string numberPattern(std::uint64_t least, std::uint64_t most);

}  // namespace documents
