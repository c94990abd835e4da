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

  /// Between start and stop there is a thread that keeps logs up to date, and makes the output event once that is
  /// possible.
  NTSTATUS start();
  void stop();

  /// Has the thread try now, if there is no output event yet.
  void awaitOutputEvent();

  void openSession(SessionSlot& slot);
  /// A request that the closing of its session has overtaken is refused.
  simulator::Answer control(const SessionSlot& slot, std::uint32_t code, std::span<std::byte> buffer,
                            std::uint32_t inputLength, std::uint32_t outputLength);
  /// Does nothing when the session is closed already.
  void closeSession(SessionSlot& slot);

 private:
  Simulation() = default;

  static void NTAPI runThread(void* simulation);
  void stopThread();
  void makeOutputEvent();
  bool awaitWork();
  void refresh();

  Mutex mutex_{};
  HANDLE thread_{};
  KEVENT threadEnd_{};
  /// The event of changed outputs is wanted now; it was tried to make it.
  KEVENT eventWanted_{};
  KEVENT eventTried_{};
  simulator::SessionId lastSession_{};
  KernelSurroundings surroundings_;
  simulator::Driver* driver_{};
};

}  // namespace device
