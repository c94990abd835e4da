// SPDX-License-Identifier: Apache-2.0
// The kernel's functions are defined here, not imported.
#define _NTOSKRNL_
#define _NTSYSTEM_
#include <ntifs.h>
// after ntifs.h, which defines what they use
#include <gtest/gtest.h>

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>

#include "simulator/device/clock.h"
#include "windows/scripted_kernel.h"

extern "C" NTSTATUS NTAPI DriverEntry(PDRIVER_OBJECT driver, PUNICODE_STRING registryPath);

namespace test {
namespace {

ScriptedKernel* running = nullptr;

/// A handle or an object of the kernel, by what it stands for.
enum : std::uintptr_t { kThreadHandle = 0x10, kEventHandle = 0x20, kProcessHandle = 0x30, kSectionHandle = 0x40 };

constexpr std::size_t kStackSize = 2;

std::string hexOf(std::uint8_t value) {
  char text[3] = {};
  std::snprintf(text, sizeof(text), "%02x", value);
  return text;
}

Bytes bytesAt(const void* memory, std::size_t size) {
  const auto* first = static_cast<const std::uint8_t*>(memory);
  return {first, first + size};
}

}  // namespace

struct ScriptedKernel::State {
  std::mutex mutex;
  std::condition_variable changed;
  Calls log;
  std::thread thread;
  std::thread::id threadId;
  int seconds = 0;
  bool isThreadWaiting = false;
  bool hasThreadEnded = true;
  int inCriticalRegions = 0;
  std::mutex fastMutex;
  int uses = 0;
  bool isRemoved = false;

  DRIVER_OBJECT driver{};
  DRIVER_EXTENSION driverExtension{};
  DEVICE_OBJECT lower{};
  DEVICE_OBJECT device{};
  std::vector<std::max_align_t> extension;
  /// The event of application outputs.
  KEVENT outputEvent{};
  std::vector<std::thread> lateCompletions;

  void record(const std::string& call) {
    const std::lock_guard lock{mutex};
    log.push_back(call);
  }
};

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

template <class Condition>
void await(std::unique_lock<std::mutex>& lock, Condition condition) {
  EXPECT_TRUE(running->state->changed.wait_for(lock, std::chrono::seconds{30}, condition)) << "for ever";
}

}  // namespace

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
  await(lock, [&] { return state->isThreadWaiting || state->hasThreadEnded; });
  ++state->seconds;
  state->isThreadWaiting = false;
  state->changed.notify_all();
  await(lock, [&] { return state->isThreadWaiting || state->hasThreadEnded; });
}

}  // namespace test

namespace device::clock {

std::uint64_t now() { return 0; }

}  // namespace device::clock

using test::running;

extern "C" {

// What programs have too, under the same names.

NTSYSAPI PVOID NTAPI GetModuleHandleA(PCSTR name);
NTSYSAPI PVOID NTAPI GetProcAddress(PVOID library, PCSTR name);

}  // extern "C"

/// The system's own function of a type that is known.
template <class Function>
static Function* systems(Function* /*type*/, const char* name) {
  return reinterpret_cast<Function*>(GetProcAddress(GetModuleHandleA("ntdll"), name));
}

extern "C" {

VOID NTAPI RtlInitUnicodeString(PUNICODE_STRING string, PCWSTR text) {
  systems(&RtlInitUnicodeString, "RtlInitUnicodeString")(string, text);
}

NTSTATUS NTAPI RtlCreateAcl(PACL list, ULONG size, ULONG revision) {
  return systems(&RtlCreateAcl, "RtlCreateAcl")(list, size, revision);
}

NTSTATUS NTAPI RtlAddAccessAllowedAce(PACL list, ULONG revision, ACCESS_MASK access, PSID who) {
  return systems(&RtlAddAccessAllowedAce, "RtlAddAccessAllowedAce")(list, revision, access, who);
}

NTSTATUS NTAPI RtlCreateSecurityDescriptor(PSECURITY_DESCRIPTOR descriptor, ULONG revision) {
  return systems(&RtlCreateSecurityDescriptor, "RtlCreateSecurityDescriptor")(descriptor, revision);
}

NTSTATUS NTAPI RtlSetDaclSecurityDescriptor(PSECURITY_DESCRIPTOR descriptor, BOOLEAN isPresent, PACL list,
                                            BOOLEAN isDefault) {
  return systems(&RtlSetDaclSecurityDescriptor, "RtlSetDaclSecurityDescriptor")(descriptor, isPresent, list, isDefault);
}

NTSTATUS NTAPI RtlSetOwnerSecurityDescriptor(PSECURITY_DESCRIPTOR descriptor, PSID owner, BOOLEAN isDefault) {
  return systems(&RtlSetOwnerSecurityDescriptor, "RtlSetOwnerSecurityDescriptor")(descriptor, owner, isDefault);
}

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
    test::finish(irp);
    return running->lowerStatus;
  }
  running->state->lateCompletions.emplace_back([irp] {
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
    test::finish(irp);
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
  test::await(lock, [&] { return state.uses == 0; });
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

// Objects.

NTSTATUS NTAPI ZwClose(HANDLE) {
  --running->handles;
  return STATUS_SUCCESS;
}

static test::ScriptedKernel::EventRequest describe(const OBJECT_ATTRIBUTES& attributes) {
  test::ScriptedKernel::EventRequest request{};
  const auto* const security = static_cast<const SECURITY_DESCRIPTOR*>(attributes.SecurityDescriptor);
  request.name.assign(attributes.ObjectName->Buffer, attributes.ObjectName->Length / sizeof(wchar_t));
  request.attributes = attributes.Attributes;
  request.owner = test::bytesAt(security->Owner, 12);
  request.accessList = test::bytesAt(security->Dacl + 1, 40);
  return request;
}

NTSTATUS NTAPI ZwCreateEvent(PHANDLE handle, ACCESS_MASK access, POBJECT_ATTRIBUTES attributes, EVENT_TYPE type,
                             BOOLEAN isSignalled) {
  auto& state = *running->state;
  auto request = describe(*attributes);
  request.access = access;
  request.isNotification = type == NotificationEvent;
  request.isSignalled = isSignalled != FALSE;
  const std::lock_guard lock{state.mutex};
  request.isOnDriversThread = std::this_thread::get_id() == state.threadId;
  running->eventRequests.push_back(request);
  if (running->eventStatus < 0) return running->eventStatus;
  if (running->eventStatus == STATUS_SUCCESS) running->isOutputEventSignalled = isSignalled != FALSE;
  ++running->handles;
  *handle = reinterpret_cast<HANDLE>(test::kEventHandle);
  return running->eventStatus;
}

NTSTATUS NTAPI ZwSetSecurityObject(HANDLE handle, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor) {
  EXPECT_EQ(handle, reinterpret_cast<HANDLE>(test::kEventHandle));
  const auto* const security = static_cast<SECURITY_DESCRIPTOR*>(descriptor);
  running->state->record("ZwSetSecurityObject " + std::to_string(what));
  EXPECT_EQ(test::bytesAt(security->Owner, 12), running->eventRequests.back().owner);
  EXPECT_EQ(test::bytesAt(security->Dacl + 1, 40), running->eventRequests.back().accessList);
  return running->securityStatus;
}

static POBJECT_TYPE eventTypeObject = reinterpret_cast<POBJECT_TYPE>(0x7777);
POBJECT_TYPE* ExEventObjectType = reinterpret_cast<POBJECT_TYPE*>(eventTypeObject);

NTSTATUS NTAPI ObReferenceObjectByHandle(HANDLE handle, ACCESS_MASK, POBJECT_TYPE type, KPROCESSOR_MODE mode,
                                         PVOID* object, POBJECT_HANDLE_INFORMATION) {
  if (mode == UserMode && type != eventTypeObject) return STATUS_OBJECT_TYPE_MISMATCH;
  *object = handle == reinterpret_cast<HANDLE>(test::kEventHandle) ? &running->state->outputEvent : handle;
  ++running->referencedObjects;
  return STATUS_SUCCESS;
}

LONG_PTR FASTCALL ObfDereferenceObject(PVOID) { return --running->referencedObjects; }

// Memory.

PVOID NTAPI ExAllocatePoolWithTag(POOL_TYPE pool, SIZE_T size, ULONG tag) {
  if (running->allocationsLeft-- <= 0) return nullptr;
  void* const memory = std::malloc(size);
  std::memset(memory, 0xA5, size);
  running->allocated[memory] = {tag, pool == PagedPool, pool != PagedPool && pool != NonPagedPoolNx};
  return memory;
}

VOID NTAPI ExFreePoolWithTag(PVOID memory, ULONG tag) {
  const auto found = running->allocated.find(memory);
  ASSERT_NE(found, running->allocated.end()) << "not allocated, or freed twice";
  EXPECT_EQ(found->second.tag, tag);
  running->allocated.erase(found);
  std::free(memory);
}

static PVOID NTAPI allocatePool2(ULONG64 flags, SIZE_T size, ULONG tag) {
  EXPECT_TRUE(flags == 0x40 || flags == 0x100) << "neither resident and not executable nor paged";
  running->state->record("ExAllocatePool2");
  void* const memory = ExAllocatePoolWithTag(flags == 0x100 ? PagedPool : NonPagedPoolNx, size, tag);
  if (memory != nullptr) std::memset(memory, 0, size);
  return memory;
}

static NTSTATUS NTAPI copyMemory(PVOID to, const void* from, SIZE_T size, ULONG flags, SIZE_T* copied) {
  EXPECT_EQ(flags, 2U) << "a virtual address";
  EXPECT_FALSE(running->allocated.empty());
  running->state->record("MmCopyMemory " + std::to_string(size));
  if (running->duringCopy) running->duringCopy();
  const auto address = reinterpret_cast<std::uint64_t>(from);
  const auto behind = running->userMemory.upper_bound(address);
  *copied = 0;
  if (behind == running->userMemory.begin()) return STATUS_ACCESS_VIOLATION;
  const auto& [start, bytes] = *std::prev(behind);
  if (address - start >= bytes.size()) return STATUS_ACCESS_VIOLATION;
  *copied = std::min<SIZE_T>(size, bytes.size() - (address - start));
  std::memcpy(to, bytes.data() + (address - start), *copied);
  return *copied == size ? STATUS_SUCCESS : STATUS_PARTIAL_COPY;
}

PVOID NTAPI MmGetSystemRoutineAddress(PUNICODE_STRING name) {
  const std::wstring wanted{name->Buffer, name->Length / sizeof(wchar_t)};
  if (!running->symbols.contains(wanted)) return nullptr;
  if (wanted == L"ExAllocatePool2") return reinterpret_cast<PVOID>(&allocatePool2);
  if (wanted == L"MmCopyMemory") return reinterpret_cast<PVOID>(&copyMemory);
  return nullptr;
}

NTSTATUS NTAPI ZwOpenProcess(PHANDLE handle, ACCESS_MASK, POBJECT_ATTRIBUTES, PCLIENT_ID) {
  ++running->handles;
  *handle = reinterpret_cast<HANDLE>(test::kProcessHandle);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI ZwCreateSection(PHANDLE handle, ACCESS_MASK, POBJECT_ATTRIBUTES, PLARGE_INTEGER, ULONG protection, ULONG,
                               HANDLE) {
  EXPECT_EQ(protection, ULONG{PAGE_READWRITE});
  ++running->handles;
  *handle = reinterpret_cast<HANDLE>(test::kSectionHandle);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI ZwMapViewOfSection(HANDLE, HANDLE process, PVOID* address, ULONG_PTR, SIZE_T, PLARGE_INTEGER, PSIZE_T,
                                  SECTION_INHERIT, ULONG, ULONG protection) {
  EXPECT_EQ(process, reinterpret_cast<HANDLE>(test::kProcessHandle));
  EXPECT_EQ(protection, ULONG{PAGE_READONLY}) << "clients must not write what others read";
  ++running->mappedViews;
  *address = reinterpret_cast<PVOID>(0x7FF000000000 + running->mappedViews * 0x10000LL);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI ZwUnmapViewOfSection(HANDLE, PVOID) {
  --running->mappedViews;
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI MmMapViewInSystemSpace(PVOID, PVOID* base, PSIZE_T size) {
  ++running->mappedViews;
  *base = std::calloc(1, *size);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI MmUnmapViewInSystemSpace(PVOID base) {
  --running->mappedViews;
  std::free(base);
  return STATUS_SUCCESS;
}

VOID NTAPI KeBugCheckEx(ULONG code, ULONG_PTR first, ULONG_PTR second, ULONG_PTR third, ULONG_PTR fourth) {
  std::fprintf(stderr, "bug check %lx %llx %s %s %llx\n", code, first, second != 0 ? "cookie" : "0",
               third == ~second ? "complement" : "another", fourth);
  std::fflush(stderr);
  std::_Exit(static_cast<int>(code));
}

}  // extern "C"
