// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// A name as names are compared: in lower case, and with underscores and spaces as hyphens.
std::string folded(std::string_view name);

/// `; did you mean "asm"?` for a name that is nearly one of the known ones; empty otherwise.
std::string didYouMean(std::string_view name, const std::vector<std::string>& known);

}  // namespace tool
