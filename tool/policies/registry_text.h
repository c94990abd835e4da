// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tool {

/// The bytes of the "hex:" value that registry export text ends with; nothing when the text does not end so.
std::optional<std::vector<std::byte>> bytesOfRegistryText(std::span<const std::byte> text);

}  // namespace tool
