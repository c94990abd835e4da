// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel_surroundings.h"
#include "simulator/device/mutex.h"
#include "simulator/model/driver.h"

namespace device {

/// Holds the number of a session while it is open. Zero otherwise.
using SessionSlot = void*;

/// The simulated driver with everything around it, made for one call at a time and used by any number of threads. All
/// calls are made at passive level.
class Simulation {
 public:
  /// A fresh driver, or nullptr when there is no memory for it.
  static Simulation* create();
  /// Takes back what the driver has given out, and ends it.
  static void destroy(Simulation* simulation);

  /// Between start and stop there are the output event and the thread that keeps logs up to date.
  NTSTATUS start();
  void stop();

  void openSession(SessionSlot& slot);
  /// A request that the closing of its session has overtaken is refused.
  simulator::Answer control(const SessionSlot& slot, std::uint32_t code, std::span<std::byte> buffer,
                            std::uint32_t inputLength, std::uint32_t outputLength);
  /// Does nothing when the session is closed already.
  void closeSession(SessionSlot& slot);

 private:
  Simulation() = default;

  static void NTAPI refreshRepeatedly(void* simulation);
  NTSTATUS startThread();
  void stopThread();
  void refresh();

  Mutex mutex_{};
  KEVENT threadEnd_{};
  HANDLE thread_{};
  simulator::SessionId lastSession_{};
  KernelSurroundings surroundings_;
  simulator::Driver* driver_{};
};

}  // namespace device
