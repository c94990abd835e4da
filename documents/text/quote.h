// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace documents {

/// What somebody wrote, as part of a sentence: in quotes, cut when it is long, control characters and broken bytes as
/// escapes, so that a sentence is one line whatever it quotes.
std::string quote(std::string_view written);

}  // namespace documents
