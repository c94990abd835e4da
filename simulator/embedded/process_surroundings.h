// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "simulator/embedded/log_memory.h"
#include "simulator/model/surroundings.h"

namespace simulator {

/// The process as the driver's surroundings: there is no other caller than the process itself.
class ProcessSurroundings final : public Surroundings {
 public:
  /// Makes the clock stand still, or go with the system's again.
  void setClock(std::optional<std::uint64_t> milliseconds) { clock_ = milliseconds; }

  std::uint64_t now() override;
  std::uint64_t process() override { return 1; }
  std::span<std::byte> logArea(LogKind kind) override { return logs_.area(kind); }
  std::uint64_t mapLog(LogKind kind) override { return logs_.map(kind); }
  void unmapLog(LogKind kind, std::uint64_t process, std::uint64_t address) override;
  bool readCaller(std::uint64_t address, std::span<std::byte> destination) override;
  void setOutputEvent(bool signalled) override;
  /// Anything will do: what is not an event is never signalled.
  std::uint64_t retainEvent(std::uint64_t handle) override { return handle; }
  void releaseEvent(std::uint64_t event) override;
  void signalEvent(std::uint64_t event) override;

 private:
  LogMemory logs_;
  std::optional<std::uint64_t> clock_;
};

inline constexpr const char16_t* kOutputEventName = u"Global\\VexoQtfAppOutputEvent";

}  // namespace simulator
