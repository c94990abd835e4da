// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace bench {

/// Reads all whole cache lines of a memory once. It is the measure of others, so it is optimised as far as the compiler
/// can in every build.
std::uint32_t sumOfWords(const void* memory, std::size_t size);

}  // namespace bench
