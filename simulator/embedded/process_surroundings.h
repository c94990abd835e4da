// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "simulator/embedded/log_memory.h"
#include "simulator/embedded/system.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// The process as the driver's surroundings: there is no other caller than the process itself.
class ProcessSurroundings final : public Surroundings {
 public:
  /// Makes the clock stand still, or go with the system's again.
  void setClock(std::optional<std::uint64_t> milliseconds) { clock_ = milliseconds; }

  std::uint64_t now() override { return clock_ ? *clock_ : system::milliseconds(); }
  std::uint64_t process() override { return 1; }
  std::span<std::byte> logArea(LogKind kind) override { return logs_.area(kind); }
  std::uint64_t mapLog(LogKind kind) override { return logs_.map(kind); }
  void unmapLog(LogKind kind, std::uint64_t /*process*/, std::uint64_t address) override {
    LogMemory::unmap(kind, address);
  }
  bool readCaller(std::uint64_t address, std::span<std::byte> destination) override {
    return system::readMemory(address, destination);
  }
  void setOutputEvent(bool signalled) override { system::setOutputEvent(signalled); }
  std::uint64_t retainEvent(std::uint64_t handle) override { return system::retainEvent(handle); }
  void releaseEvent(std::uint64_t event) override { system::releaseEvent(event); }
  void signalEvent(std::uint64_t event) override { system::signalEvent(event); }

 private:
  LogMemory logs_;
  std::optional<std::uint64_t> clock_;
};

}  // namespace simulator
