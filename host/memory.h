// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace host {

/// Allocates, or grows, the memory of the host's own lists and objects, which is given back with free. Tests tell the
/// host's allocations from the library's by this function. Null when there is no memory.
void* resized(void* memory, std::size_t size);

}  // namespace host
