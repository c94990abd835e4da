// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/output_event.h"

namespace device {
namespace {

constexpr SID kEverybody = {SID_REVISION, 1, SECURITY_WORLD_SID_AUTHORITY, {SECURITY_WORLD_RID}};
constexpr SID kSystem = {SID_REVISION, 1, SECURITY_NT_AUTHORITY, {SECURITY_LOCAL_SYSTEM_RID}};

/// The access list of the event and the memory that it lies in.
struct EventSecurity {
  SECURITY_DESCRIPTOR descriptor;
  alignas(ACL) UCHAR list[128];

  NTSTATUS initialize();
};

NTSTATUS allow(PACL list, ACCESS_MASK access, SID who) {
  return RtlAddAccessAllowedAce(list, ACL_REVISION, access, &who);
}

NTSTATUS EventSecurity::initialize() {
  auto* const acl = reinterpret_cast<PACL>(list);
  NTSTATUS status = RtlCreateSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
  if (NT_SUCCESS(status)) status = RtlCreateAcl(acl, sizeof(list), ACL_REVISION);
  if (NT_SUCCESS(status)) status = allow(acl, EVENT_ALL_ACCESS, kSystem);
  if (NT_SUCCESS(status)) status = allow(acl, SYNCHRONIZE | READ_CONTROL | EVENT_QUERY_STATE, kEverybody);
  if (NT_SUCCESS(status)) status = RtlSetDaclSecurityDescriptor(&descriptor, TRUE, acl, FALSE);
  return status;
}

}  // namespace

NTSTATUS OutputEvent::create() {
  EventSecurity security;
  NTSTATUS status = security.initialize();
  if (!NT_SUCCESS(status)) return status;
  UNICODE_STRING name;
  RtlInitUnicodeString(&name, L"\\BaseNamedObjects\\VexoQtfAppOutputEvent");
  OBJECT_ATTRIBUTES attributes;
  // A client that outlived an earlier driver may still hold the event.
  InitializeObjectAttributes(&attributes, &name, OBJ_KERNEL_HANDLE | OBJ_OPENIF, nullptr, &security.descriptor);
  status = ZwCreateEvent(&handle_, EVENT_ALL_ACCESS, &attributes, NotificationEvent, FALSE);
  if (!NT_SUCCESS(status)) {
    handle_ = nullptr;
    return status;
  }
  set(false);
  return STATUS_SUCCESS;
}

void OutputEvent::close() {
  if (handle_ != nullptr) ZwClose(handle_);
  handle_ = nullptr;
}

void OutputEvent::set(bool signalled) {
  if (handle_ == nullptr) return;
  if (signalled)
    ZwSetEvent(handle_, nullptr);
  else
    ZwClearEvent(handle_);
}

}  // namespace device
