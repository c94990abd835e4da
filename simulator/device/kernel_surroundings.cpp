// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/kernel_surroundings.h"

#include "simulator/device/caller.h"
#include "simulator/device/clock.h"

namespace device {

void KernelSurroundings::stop() {
  logs_.release();
  outputEvent_.close();
}

std::uint64_t KernelSurroundings::now() {
  constexpr std::uint64_t kUnitsPerMillisecond = 10'000;
  return clock::now() / kUnitsPerMillisecond;
}

std::uint64_t KernelSurroundings::process() { return reinterpret_cast<std::uint64_t>(PsGetCurrentProcessId()); }

void KernelSurroundings::unmapLog(simulator::LogKind /*kind*/, std::uint64_t process, std::uint64_t address) {
  logs_.unmap(process, address);
}

bool KernelSurroundings::readCaller(std::uint64_t address, std::span<std::byte> destination) {
  return caller::read(address, destination);
}

std::uint64_t KernelSurroundings::retainEvent(std::uint64_t handle) {
  return reinterpret_cast<std::uint64_t>(caller::referenceEvent(handle));
}

void KernelSurroundings::releaseEvent(std::uint64_t event) { ObDereferenceObject(reinterpret_cast<PKEVENT>(event)); }

void KernelSurroundings::signalEvent(std::uint64_t event) {
  KeSetEvent(reinterpret_cast<PKEVENT>(event), IO_NO_INCREMENT, FALSE);
}

}  // namespace device
