// SPDX-License-Identifier: Apache-2.0
#include "simulator/embedded/process_surroundings.h"

#include <sys/uio.h>
#include <unistd.h>

#include <chrono>

#include "host/host.h"

namespace simulator {

std::uint64_t ProcessSurroundings::now() {
  using std::chrono::system_clock;
  if (clock_) return *clock_;
  const auto sinceEpoch = system_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count());
}

void ProcessSurroundings::unmapLog(LogKind kind, std::uint64_t /*process*/, std::uint64_t address) {
  LogMemory::unmap(kind, address);
}

/// By the system, which answers for addresses that cannot be read.
bool ProcessSurroundings::readCaller(std::uint64_t address, std::span<std::byte> destination) {
  const iovec local = {.iov_base = destination.data(), .iov_len = destination.size()};
  const iovec remote = {.iov_base = reinterpret_cast<void*>(address), .iov_len = destination.size()};
  return process_vm_readv(getpid(), &local, 1, &remote, 1, 0) == static_cast<ssize_t>(destination.size());
}

void ProcessSurroundings::setOutputEvent(bool signalled) {
  signalled ? host::signalEvent(kOutputEventName) : host::resetEvent(kOutputEventName);
}

void ProcessSurroundings::releaseEvent(std::uint64_t /*event*/) {}

void ProcessSurroundings::signalEvent(std::uint64_t event) { host::signalHandle(reinterpret_cast<HANDLE>(event)); }

}  // namespace simulator
