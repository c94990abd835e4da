// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace host {

/// What the host keeps is made and grown here, and given back with free: tests tell it so from what the library
/// allocates. Null when there is no memory for it.
void* resized(void* memory, std::size_t size);

}  // namespace host
