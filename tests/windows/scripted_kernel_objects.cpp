// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/scripted_kernel_state.h"

using test::running;

namespace {

test::Bytes bytesAt(const void* memory, std::size_t size) {
  const auto* first = static_cast<const std::uint8_t*>(memory);
  return {first, first + size};
}

}  // namespace

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
  request.owner = bytesAt(security->Owner, 12);
  request.accessList = bytesAt(security->Dacl + 1, 40);
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
  EXPECT_EQ(bytesAt(security->Owner, 12), running->eventRequests.back().owner);
  EXPECT_EQ(bytesAt(security->Dacl + 1, 40), running->eventRequests.back().accessList);
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

}  // extern "C"
