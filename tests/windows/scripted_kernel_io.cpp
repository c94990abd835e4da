// SPDX-License-Identifier: Apache-2.0
#include <chrono>

#include "tests/windows/scripted_kernel_state.h"

using test::running;

namespace {

/// Goes back up from the device below, as far as the drivers above let it.
void finish(PIRP irp) {
  PIO_STACK_LOCATION location = IoGetCurrentIrpStackLocation(irp);
  const bool isAsked = location->CompletionRoutine != nullptr;
  if (isAsked &&
      location->CompletionRoutine(&running->state->device, irp, location->Context) == STATUS_MORE_PROCESSING_REQUIRED)
    return;
  EXPECT_FALSE(irp->PendingReturned) << "completed twice";
  irp->PendingReturned = TRUE;
}

}  // namespace

extern "C" {

// Input and output.

NTSTATUS NTAPI IoCreateDevice(PDRIVER_OBJECT, ULONG extensionSize, PUNICODE_STRING, DEVICE_TYPE, ULONG, BOOLEAN,
                              PDEVICE_OBJECT* device) {
  auto& state = *running->state;
  state.record("IoCreateDevice");
  state.extension.assign(extensionSize / sizeof(std::max_align_t) + 1, {});
  state.device.DeviceExtension = state.extension.data();
  state.device.Flags = DO_DEVICE_INITIALIZING;
  *device = &state.device;
  return STATUS_SUCCESS;
}

VOID NTAPI IoDeleteDevice(PDEVICE_OBJECT) {
  running->state->record("IoDeleteDevice");
  running->isDeleted = true;
}

PDEVICE_OBJECT NTAPI IoAttachDeviceToDeviceStack(PDEVICE_OBJECT, PDEVICE_OBJECT lower) {
  running->state->record("IoAttachDeviceToDeviceStack");
  return running->canAttach ? lower : nullptr;
}

VOID NTAPI IoDetachDevice(PDEVICE_OBJECT) { running->state->record("IoDetachDevice"); }

NTSTATUS NTAPI IoRegisterDeviceInterface(PDEVICE_OBJECT, const GUID*, PUNICODE_STRING, PUNICODE_STRING name) {
  static wchar_t text[] = L"name of an interface";
  RtlInitUnicodeString(name, text);
  ++running->handles;
  return STATUS_SUCCESS;
}

VOID NTAPI RtlFreeUnicodeString(PUNICODE_STRING) { --running->handles; }

NTSTATUS NTAPI IoSetDeviceInterfaceState(PUNICODE_STRING, BOOLEAN isEnabled) {
  running->state->record(std::string{"IoSetDeviceInterfaceState "} + (isEnabled ? "1" : "0"));
  return isEnabled ? running->interfaceStatus : STATUS_SUCCESS;
}

NTSTATUS FASTCALL IofCallDriver(PDEVICE_OBJECT, PIRP irp) {
  --irp->CurrentLocation;
  auto* const location = --irp->Tail.Overlay.CurrentStackLocation;
  running->state->record("IofCallDriver " + test::hexOf(location->MajorFunction) + "." +
                         test::hexOf(location->MinorFunction));
  irp->IoStatus.Status = running->lowerStatus;
  if (!running->isLowerSlow) {
    finish(irp);
    return running->lowerStatus;
  }
  running->state->lateCompletions.emplace_back([irp] {
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
    finish(irp);
  });
  return STATUS_PENDING;
}

VOID FASTCALL IofCompleteRequest(PIRP irp, CCHAR) {
  running->state->record("IofCompleteRequest");
  EXPECT_FALSE(irp->PendingReturned) << "completed twice";
  irp->PendingReturned = TRUE;
}

VOID NTAPI IoInitializeRemoveLockEx(PIO_REMOVE_LOCK, ULONG, ULONG, ULONG, ULONG) {}

NTSTATUS NTAPI IoAcquireRemoveLockEx(PIO_REMOVE_LOCK, PVOID, PCSTR, ULONG, ULONG) {
  auto& state = *running->state;
  state.record("IoAcquireRemoveLockEx");
  const std::lock_guard lock{state.mutex};
  if (state.isRemoved) return STATUS_DELETE_PENDING;
  ++state.uses;
  return STATUS_SUCCESS;
}

VOID NTAPI IoReleaseRemoveLockEx(PIO_REMOVE_LOCK, PVOID, ULONG) {
  auto& state = *running->state;
  state.record("IoReleaseRemoveLockEx");
  const std::lock_guard lock{state.mutex};
  EXPECT_GT(state.uses, 0);
  --state.uses;
  state.changed.notify_all();
}

VOID NTAPI IoReleaseRemoveLockAndWaitEx(PIO_REMOVE_LOCK, PVOID, ULONG) {
  auto& state = *running->state;
  state.record("IoReleaseRemoveLockAndWaitEx");
  std::unique_lock lock{state.mutex};
  state.isRemoved = true;
  --state.uses;
  state.await(lock, [&] { return state.uses == 0; });
}

// Waiting.

VOID NTAPI KeInitializeEvent(PRKEVENT event, EVENT_TYPE type, BOOLEAN isSignalled) {
  event->Header.Type = static_cast<UCHAR>(type);
  event->Header.SignalState = isSignalled;
}

LONG NTAPI KeSetEvent(PRKEVENT event, KPRIORITY, BOOLEAN) {
  auto& state = *running->state;
  const std::lock_guard lock{state.mutex};
  if (event == &state.outputEvent) running->isOutputEventSignalled = true;
  event->Header.SignalState = 1;
  state.changed.notify_all();
  return 0;
}

VOID NTAPI KeClearEvent(PRKEVENT event) {
  auto& state = *running->state;
  const std::lock_guard lock{state.mutex};
  if (event == &state.outputEvent) running->isOutputEventSignalled = false;
  event->Header.SignalState = 0;
}

NTSTATUS NTAPI KeWaitForMultipleObjects(ULONG count, PVOID objects[], WAIT_TYPE, KWAIT_REASON, KPROCESSOR_MODE, BOOLEAN,
                                        PLARGE_INTEGER timeout, PKWAIT_BLOCK) {
  auto& state = *running->state;
  std::unique_lock lock{state.mutex};
  const bool isThread = std::this_thread::get_id() == state.threadId;
  const int begin = state.seconds;
  ULONG signalled = count;
  const auto look = [&] {
    for (signalled = 0; signalled < count; ++signalled)
      if (static_cast<PRKEVENT>(objects[signalled])->Header.SignalState != 0) return true;
    return timeout != nullptr && state.seconds != begin;
  };
  while (!look()) {
    if (isThread) state.isThreadWaiting = true;
    state.changed.notify_all();
    if (state.changed.wait_for(lock, std::chrono::seconds{30}) == std::cv_status::timeout) ADD_FAILURE() << "for ever";
  }
  if (isThread) state.isThreadWaiting = false;
  if (signalled == count) return STATUS_TIMEOUT;
  auto* const event = static_cast<PRKEVENT>(objects[signalled]);
  if (event->Header.Type == SynchronizationEvent) event->Header.SignalState = 0;
  return static_cast<NTSTATUS>(STATUS_WAIT_0 + signalled);
}

NTSTATUS NTAPI KeWaitForSingleObject(PVOID object, KWAIT_REASON reason, KPROCESSOR_MODE mode, BOOLEAN isAlertable,
                                     PLARGE_INTEGER timeout) {
  return KeWaitForMultipleObjects(1, &object, WaitAny, reason, mode, isAlertable, timeout, nullptr);
}

VOID NTAPI KeEnterCriticalRegion() { ++running->state->inCriticalRegions; }
VOID NTAPI KeLeaveCriticalRegion() { --running->state->inCriticalRegions; }

VOID FASTCALL ExAcquireFastMutexUnsafe(PFAST_MUTEX) {
  running->state->fastMutex.lock();
  EXPECT_GT(running->state->inCriticalRegions, 0) << "the thread may be suspended with the mutex";
}
VOID FASTCALL ExReleaseFastMutexUnsafe(PFAST_MUTEX) { running->state->fastMutex.unlock(); }

NTSTATUS NTAPI PsCreateSystemThread(PHANDLE handle, ULONG, POBJECT_ATTRIBUTES attributes, HANDLE, PCLIENT_ID,
                                    PKSTART_ROUTINE routine, PVOID context) {
  if (!running->canStartThreads) return STATUS_INSUFFICIENT_RESOURCES;
  EXPECT_NE(attributes->Attributes & OBJ_KERNEL_HANDLE, 0U);
  auto& state = *running->state;
  state.hasThreadEnded = false;
  state.thread = std::thread{[&state, routine, context] {
    {
      const std::lock_guard lock{state.mutex};
      state.threadId = std::this_thread::get_id();
    }
    routine(context);
    const std::lock_guard lock{state.mutex};
    state.hasThreadEnded = true;
    state.changed.notify_all();
  }};
  ++running->handles;
  *handle = reinterpret_cast<HANDLE>(test::kThreadHandle);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI PsTerminateSystemThread(NTSTATUS status) { return status; }

NTSTATUS NTAPI ZwWaitForSingleObject(HANDLE handle, BOOLEAN, PLARGE_INTEGER) {
  EXPECT_EQ(handle, reinterpret_cast<HANDLE>(test::kThreadHandle));
  running->state->thread.join();
  return STATUS_SUCCESS;
}

HANDLE NTAPI PsGetCurrentProcessId() { return reinterpret_cast<HANDLE>(4242); }

}  // extern "C"
