// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/scripted_kernel_state.h"

#include <algorithm>

#include "simulator/device/clock.h"

extern "C" NTSTATUS NTAPI DriverEntry(PDRIVER_OBJECT driver, PUNICODE_STRING registryPath);

namespace test {
namespace {

constexpr std::size_t kStackSize = 2;

}  // namespace

ScriptedKernel* running = nullptr;

std::string hexOf(std::uint8_t value) {
  char text[3] = {};
  std::snprintf(text, sizeof(text), "%02x", value);
  return text;
}

ScriptedKernel::ScriptedKernel() : state(std::make_unique<State>()) {
  running = this;
  state->driver.DriverExtension = &state->driverExtension;
  EXPECT_EQ(DriverEntry(&state->driver, nullptr), STATUS_SUCCESS);
}

ScriptedKernel::~ScriptedKernel() {
  if (state->thread.joinable()) state->thread.join();
  for (auto& completion : state->lateCompletions) completion.join();
  EXPECT_EQ(state->inCriticalRegions, 0);
  if (isDeleted) {
    EXPECT_TRUE(allocated.empty()) << "memory is left";
    EXPECT_EQ(handles, 0) << "handles are left";
    EXPECT_EQ(referencedObjects, 0) << "objects are left";
    EXPECT_EQ(mappedViews, 0) << "views are left";
    EXPECT_EQ(state->uses, 0);
  }
  running = nullptr;
}

Calls ScriptedKernel::calls(std::initializer_list<std::string_view> beginnings) {
  const std::lock_guard lock{state->mutex};
  Calls wanted;
  for (const auto& call : state->log)
    for (const auto& beginning : beginnings)
      if (call.starts_with(beginning)) wanted.push_back(call);
  state->log.clear();
  return wanted;
}

Status ScriptedKernel::addDevice() {
  state->lower.Flags = lowerFlags;
  state->lower.StackSize = 1;
  const Status status = state->driverExtension.AddDevice(&state->driver, &state->lower);
  deviceFlags = state->device.Flags;
  return status;
}

Status ScriptedKernel::request(std::uint8_t major, std::uint8_t minor) {
  return send(major, minor, nullptr, 0, nullptr, 0);
}

Status ScriptedKernel::create(File& file) { return send(IRP_MJ_CREATE, 0, &file, 0, nullptr, 0); }
Status ScriptedKernel::cleanup(File& file) { return send(IRP_MJ_CLEANUP, 0, &file, 0, nullptr, 0); }
Status ScriptedKernel::close(File& file) { return send(IRP_MJ_CLOSE, 0, &file, 0, nullptr, 0); }

Status ScriptedKernel::control(File& file, std::uint32_t code, Bytes& buffer, std::size_t outputLength) {
  return send(IRP_MJ_DEVICE_CONTROL, 0, &file, code, &buffer, outputLength);
}

Status ScriptedKernel::controlWithoutFile(std::uint32_t code, Bytes& buffer, std::size_t outputLength) {
  return send(IRP_MJ_DEVICE_CONTROL, 0, nullptr, code, &buffer, outputLength);
}

Status ScriptedKernel::send(std::uint8_t major, std::uint8_t minor, File* file, std::uint32_t code, Bytes* buffer,
                            std::size_t outputLength) {
  std::vector<std::max_align_t> memory(
      (sizeof(IRP) + (kStackSize + 1) * sizeof(IO_STACK_LOCATION)) / sizeof(std::max_align_t) + 1);
  auto* const irp = reinterpret_cast<PIRP>(memory.data());
  auto* const locations = reinterpret_cast<PIO_STACK_LOCATION>(irp + 1);
  FILE_OBJECT fileObject{};
  irp->StackCount = irp->CurrentLocation = kStackSize;
  irp->Tail.Overlay.CurrentStackLocation = &locations[kStackSize - 1];
  irp->IoStatus.Status = kNotSupported;
  auto& location = locations[kStackSize - 1];
  location.MajorFunction = major;
  location.MinorFunction = minor;
  if (file != nullptr) {
    fileObject.FsContext = *file;
    location.FileObject = &fileObject;
  }
  Bytes system;
  if (buffer != nullptr) {
    system = *buffer;
    system.resize(std::max(system.size(), outputLength));
    irp->AssociatedIrp.SystemBuffer = system.data();
    location.Parameters.DeviceIoControl.IoControlCode = code;
    location.Parameters.DeviceIoControl.InputBufferLength = static_cast<ULONG>(buffer->size());
    location.Parameters.DeviceIoControl.OutputBufferLength = static_cast<ULONG>(outputLength);
  }
  const Status status = state->driver.MajorFunction[major](&state->device, irp);
  EXPECT_TRUE(irp->PendingReturned) << "not completed: " << hexOf(major) << "." << hexOf(minor);
  EXPECT_EQ(irp->IoStatus.Status, status) << "said one thing and did another";
  if (file != nullptr) *file = fileObject.FsContext;
  if (buffer != nullptr && status == kSuccess) {
    system.resize(irp->IoStatus.Information);
    *buffer = system;
  }
  return status;
}

void ScriptedKernel::passSecond() {
  std::unique_lock lock{state->mutex};
  state->await(lock, [&] { return state->isThreadWaiting || state->hasThreadEnded; });
  ++state->seconds;
  state->isThreadWaiting = false;
  state->changed.notify_all();
  state->await(lock, [&] { return state->isThreadWaiting || state->hasThreadEnded; });
}

}  // namespace test

namespace device::clock {

std::uint64_t now() { return 0; }

}  // namespace device::clock
