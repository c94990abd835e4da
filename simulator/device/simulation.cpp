// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/simulation.h"

#include <new>

namespace device {

Simulation* Simulation::create() {
  void* const memory = allocate(NonPagedPoolNx, sizeof(Simulation));
  void* const driver = allocate(PagedPool, sizeof(simulator::Driver));
  if (memory == nullptr || driver == nullptr) {
    if (memory != nullptr) release(memory);
    if (driver != nullptr) release(driver);
    return nullptr;
  }
  auto* const simulation = new (memory) Simulation;
  simulation->mutex_.initialize();
  simulation->driver_ = static_cast<simulator::Driver*>(driver);
  return simulation;
}

void Simulation::destroy(Simulation* simulation) {
  simulation->stop();
  release(simulation->driver_);
  release(simulation);
}

NTSTATUS Simulation::start() {
  NTSTATUS status = surroundings_.start();
  if (!NT_SUCCESS(status)) return status;
  status = startThread();
  if (!NT_SUCCESS(status)) surroundings_.stop();
  return status;
}

void Simulation::stop() {
  stopThread();
  const LockGuard lock{mutex_};
  surroundings_.stop();
}

NTSTATUS Simulation::startThread() {
  KeInitializeEvent(&threadEnd_, NotificationEvent, FALSE);
  OBJECT_ATTRIBUTES attributes;
  InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE, nullptr, nullptr);
  return PsCreateSystemThread(&thread_, SYNCHRONIZE, &attributes, nullptr, nullptr, &refreshRepeatedly, this);
}

void Simulation::stopThread() {
  if (thread_ == nullptr) return;
  KeSetEvent(&threadEnd_, IO_NO_INCREMENT, FALSE);
  ZwWaitForSingleObject(thread_, FALSE, nullptr);
  ZwClose(thread_);
  thread_ = nullptr;
}

void Simulation::refreshRepeatedly(void* simulation) {
  auto& self = *static_cast<Simulation*>(simulation);
  LARGE_INTEGER second;
  second.QuadPart = -10'000'000;
  while (KeWaitForSingleObject(&self.threadEnd_, Executive, KernelMode, FALSE, &second) == STATUS_TIMEOUT)
    self.refresh();
  PsTerminateSystemThread(STATUS_SUCCESS);
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
