// SPDX-License-Identifier: Apache-2.0
#include "host/memory.h"

#include <cstdlib>

namespace host {

void* resized(void* memory, std::size_t size) { return std::realloc(memory, size); }

}  // namespace host
