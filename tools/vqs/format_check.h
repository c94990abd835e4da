// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace tool {

/// No entry of a policy binary is shorter: one byte of name and of description, one condition, no text, no action.
inline constexpr std::size_t kSmallestFileEntry = (4 + 1) + (4 + 1) + 19 + 8 + 16 + 4;

/// The first thing that is wrong with a policy binary, with its place: the explanation for a file that the library
/// refuses. Nothing for a file that holds what it announces.
std::optional<std::string> findFormatDefect(std::span<const std::byte> file);

}  // namespace tool
