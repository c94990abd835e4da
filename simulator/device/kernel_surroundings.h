// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/log_areas.h"
#include "simulator/device/output_event.h"

namespace device {

/// The kernel, as the simulated driver asks for it.
class KernelSurroundings final : public simulator::Surroundings {
 public:
  /// Makes the event of changed outputs, where that is not done and possible.
  void makeOutputEvent(bool signalled) { outputEvent_.make(signalled); }
  [[nodiscard]] bool hasOutputEvent() const { return outputEvent_.isMade(); }
  /// Takes back everything that was given out.
  void stop();

  std::uint64_t now() override;
  std::uint64_t process() override;
  std::span<std::byte> logArea(simulator::LogKind kind) override { return logs_.own(kind); }
  std::uint64_t mapLog(simulator::LogKind kind) override { return logs_.map(kind); }
  void unmapLog(simulator::LogKind kind, std::uint64_t process, std::uint64_t address) override;
  bool readCaller(std::uint64_t address, std::span<std::byte> destination) override;
  void setOutputEvent(bool signalled) override { outputEvent_.set(signalled); }
  std::uint64_t retainEvent(std::uint64_t handle) override;
  void releaseEvent(std::uint64_t event) override;
  void signalEvent(std::uint64_t event) override;

 private:
  LogAreas logs_{};
  OutputEvent outputEvent_{};
};

}  // namespace device
