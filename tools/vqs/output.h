// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace tool {

/// Writes to standard output. Throws a Failure when not all of it gets there.
void writeOutput(std::string_view text);

/// Writes the one line on standard error: "vqs: " and the message, whatever the message holds.
void writeError(std::string_view message);

}  // namespace tool
