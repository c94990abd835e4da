// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// A line of a text with its number, and below it marks under the bytes from `start` to `end`, one at least:
///
///    14 |         { "Power Source": 77 },
///       |                           ^^
///
/// Tabs become spaces, what could drive a terminal becomes escapes, and of a long line the surroundings of the marks
/// are shown.
std::string renderExcerpt(std::size_t number, std::string_view line, std::size_t start, std::size_t end);

}  // namespace tool
