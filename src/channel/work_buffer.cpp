// SPDX-License-Identifier: Apache-2.0
#include "src/channel/work_buffer.h"

#include <cstdlib>

namespace vqs {

void* RuntimeMemory::allocate(std::size_t size) { return std::calloc(1, size); }
void* UnclearedMemory::allocate(std::size_t size) { return std::malloc(size); }
void RuntimeMemory::release(void* memory) { std::free(memory); }

}  // namespace vqs
