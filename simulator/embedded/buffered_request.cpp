// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/buffered_request.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace simulator {
namespace {

struct Free {
  void operator()(std::byte* memory) const { std::free(memory); }
};
using SystemBuffer = std::unique_ptr<std::byte, Free>;

/// Where the input fills it, nothing is left to be zeroed, and most requests are as long as their answers. Otherwise it
/// is zeroed by the system, so that a huge length that the driver refuses anyway costs nothing.
SystemBuffer allocate(const host::DeviceRequest& request) {
  const std::size_t size = std::max<std::size_t>({request.inputLength, request.outputLength, 1});
  void* const memory = request.inputLength == size ? std::malloc(size) : std::calloc(1, size);
  return SystemBuffer{static_cast<std::byte*>(memory)};
}

}  // namespace

bool runBuffered(Driver& driver, Surroundings& surroundings, SessionId session, const host::DeviceRequest& request) {
  if (request.returned != nullptr) *request.returned = 0;
  const std::size_t size = std::max(request.inputLength, request.outputLength);
  const SystemBuffer buffer = allocate(request);
  if (buffer == nullptr) return false;
  if (request.inputLength != 0) std::memcpy(buffer.get(), request.input, request.inputLength);
  const Answer answer = driver.control(surroundings, session, request.code, {buffer.get(), size}, request.inputLength,
                                       request.outputLength);
  if (answer.outcome != Outcome::kSuccess) return false;
  if (answer.length != 0) std::memcpy(request.output, buffer.get(), answer.length);
  if (request.returned != nullptr) *request.returned = answer.length;
  return true;
}

}  // namespace simulator
