// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/output_event.h"

#include "simulator/device/wine.h"

namespace device {
namespace {

/// OBJ_DONT_REPARSE, which older toolchains lack: a link that somebody puts at the name must not lead to another
/// object.
constexpr ULONG kNoLinks = 0x1000;

constexpr SID kEverybody = {SID_REVISION, 1, SECURITY_WORLD_SID_AUTHORITY, {SECURITY_WORLD_RID}};
constexpr SID kSystem = {SID_REVISION, 1, SECURITY_NT_AUTHORITY, {SECURITY_LOCAL_SYSTEM_RID}};

/// Bytes of an access list's entry whose SID has one subauthority.
constexpr ULONG kEntrySize = sizeof(ACCESS_ALLOWED_ACE) - sizeof(ULONG) + sizeof(SID);

/// Owner and access list of the event, and the memory that they lie in.
struct EventSecurity {
  SECURITY_DESCRIPTOR descriptor;
  SID owner;
  alignas(ACL) UCHAR list[sizeof(ACL) + 2 * kEntrySize];

  NTSTATUS initialize();
};

NTSTATUS allow(PACL list, ACCESS_MASK access, SID who) {
  return RtlAddAccessAllowedAce(list, ACL_REVISION, access, &who);
}

NTSTATUS EventSecurity::initialize() {
  auto* const acl = reinterpret_cast<PACL>(list);
  owner = kSystem;
  NTSTATUS status = RtlCreateSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
  if (NT_SUCCESS(status)) status = RtlSetOwnerSecurityDescriptor(&descriptor, &owner, FALSE);
  if (NT_SUCCESS(status)) status = RtlCreateAcl(acl, sizeof(list), ACL_REVISION);
  if (NT_SUCCESS(status)) status = allow(acl, EVENT_ALL_ACCESS, kSystem);
  if (NT_SUCCESS(status)) status = allow(acl, SYNCHRONIZE | READ_CONTROL | EVENT_QUERY_STATE, kEverybody);
  if (NT_SUCCESS(status)) status = RtlSetDaclSecurityDescriptor(&descriptor, TRUE, acl, FALSE);
  return status;
}

/// Makes or opens the event and gives it this security; nullptr when the name belongs to something else.
HANDLE makeOrOpen(EventSecurity& security, bool signalled) {
  UNICODE_STRING name;
  RtlInitUnicodeString(&name, outputEventName());
  OBJECT_ATTRIBUTES attributes;
  InitializeObjectAttributes(&attributes, &name, OBJ_KERNEL_HANDLE | OBJ_OPENIF | kNoLinks, nullptr,
                             &security.descriptor);
  HANDLE handle = nullptr;
  NTSTATUS status = ZwCreateEvent(&handle, EVENT_ALL_ACCESS, &attributes, NotificationEvent, signalled ? TRUE : FALSE);
  if (!NT_SUCCESS(status)) return nullptr;
  if (status == STATUS_OBJECT_NAME_EXISTS)
    status = ZwSetSecurityObject(handle, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, &security.descriptor);
  if (NT_SUCCESS(status)) return handle;
  ZwClose(handle);
  return nullptr;
}

}  // namespace

void OutputEvent::make(bool signalled) {
  EventSecurity security;
  if (isMade() || !NT_SUCCESS(security.initialize())) return;
  const HANDLE handle = makeOrOpen(security, signalled);
  if (handle == nullptr) return;
  if (take(handle))
    set(signalled);
  else
    ZwClose(handle);
}

bool OutputEvent::take(HANDLE handle) {
  void* object = nullptr;
  if (!NT_SUCCESS(ObReferenceObjectByHandle(handle, EVENT_MODIFY_STATE, eventType(), KernelMode, &object, nullptr)))
    return false;
  handle_ = handle;
  event_ = static_cast<PKEVENT>(object);
  return true;
}

void OutputEvent::close() {
  if (!isMade()) return;
  ObDereferenceObject(event_);
  ZwClose(handle_);
  *this = {};
}

void OutputEvent::set(bool signalled) {
  if (!isMade()) return;
  if (wine::isPresent())
    wine::setEvent(handle_, signalled);
  else if (signalled)
    KeSetEvent(event_, IO_NO_INCREMENT, FALSE);
  else
    KeClearEvent(event_);
}

}  // namespace device
