// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/simulation.h"

#include <new>

#include "simulator/device/pool.h"

namespace device {
namespace {

/// In units of 100 ns; negative, because it counts from now on.
constexpr LARGE_INTEGER kOneSecond = {.QuadPart = -10'000'000};

}  // namespace

Simulation* Simulation::create() {
  void* const memory = pool::allocateResident(pool::Purpose::simulation, sizeof(Simulation));
  void* const driver = pool::allocatePaged(pool::Purpose::driver, sizeof(simulator::Driver));
  if (memory == nullptr || driver == nullptr) {
    if (memory != nullptr) pool::release(pool::Purpose::simulation, memory);
    if (driver != nullptr) pool::release(pool::Purpose::driver, driver);
    return nullptr;
  }
  auto* const simulation = new (memory) Simulation;
  simulation->mutex_.initialize();
  simulation->driver_ = static_cast<simulator::Driver*>(driver);
  return simulation;
}

void Simulation::destroy(Simulation* simulation) {
  simulation->stop();
  pool::release(pool::Purpose::driver, simulation->driver_);
  pool::release(pool::Purpose::simulation, simulation);
}

NTSTATUS Simulation::start() {
  KeInitializeEvent(&threadEnd_, NotificationEvent, FALSE);
  KeInitializeEvent(&eventWanted_, SynchronizationEvent, FALSE);
  KeInitializeEvent(&eventTried_, NotificationEvent, FALSE);
  OBJECT_ATTRIBUTES attributes;
  InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE, nullptr, nullptr);
  return PsCreateSystemThread(&thread_, SYNCHRONIZE, &attributes, nullptr, nullptr, &runThread, this);
}

void Simulation::stop() {
  stopThread();
  const LockGuard lock{mutex_};
  surroundings_.stop();
}

void Simulation::stopThread() {
  if (thread_ == nullptr) return;
  KeSetEvent(&threadEnd_, IO_NO_INCREMENT, FALSE);
  ZwWaitForSingleObject(thread_, FALSE, nullptr);
  ZwClose(thread_);
  thread_ = nullptr;
}

void Simulation::runThread(void* simulation) {
  auto& self = *static_cast<Simulation*>(simulation);
  do {
    self.makeOutputEvent();
    self.refresh();
  } while (self.awaitWork());
  PsTerminateSystemThread(STATUS_SUCCESS);
}

/// Called by the system thread only: an object belongs to the process whose thread makes it.
void Simulation::makeOutputEvent() {
  {
    const LockGuard lock{mutex_};
    surroundings_.makeOutputEvent(driver_->areOutputsUnread());
  }
  KeSetEvent(&eventTried_, IO_NO_INCREMENT, FALSE);
}

/// Until the next second, or until the event is wanted earlier; false when the thread is to end.
bool Simulation::awaitWork() {
  void* objects[] = {&threadEnd_, &eventWanted_};
  LARGE_INTEGER second = kOneSecond;
  return KeWaitForMultipleObjects(2, objects, WaitAny, Executive, KernelMode, FALSE, &second, nullptr) != STATUS_WAIT_0;
}

void Simulation::awaitOutputEvent() {
  if (surroundings_.hasOutputEvent()) return;
  KeClearEvent(&eventTried_);
  KeSetEvent(&eventWanted_, IO_NO_INCREMENT, FALSE);
  LARGE_INTEGER second = kOneSecond;
  KeWaitForSingleObject(&eventTried_, Executive, KernelMode, FALSE, &second);
}

void Simulation::refresh() {
  const LockGuard lock{mutex_};
  if (driver_->hasMappedLogs()) driver_->refresh(surroundings_);
}

void Simulation::openSession(SessionSlot& slot) {
  const LockGuard lock{mutex_};
  slot = reinterpret_cast<SessionSlot>(++lastSession_);
}

simulator::Answer Simulation::control(const SessionSlot& slot, std::uint32_t code, std::span<std::byte> buffer,
                                      std::uint32_t inputLength, std::uint32_t outputLength) {
  const LockGuard lock{mutex_};
  const auto session = reinterpret_cast<simulator::SessionId>(slot);
  if (session == 0) return simulator::failed(simulator::Outcome::refused);
  return driver_->control(surroundings_, session, code, buffer, inputLength, outputLength);
}

void Simulation::closeSession(SessionSlot& slot) {
  const LockGuard lock{mutex_};
  const auto session = reinterpret_cast<simulator::SessionId>(slot);
  slot = nullptr;
  if (session != 0) driver_->close(surroundings_, session);
}

}  // namespace device
