// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/device.h"

#include "simulator/device/runtime.h"

namespace device {
namespace {

VQS_LOAD_CODE NTSTATUS enter(PDRIVER_OBJECT driver) {
  driver->DriverExtension->AddDevice = &addDevice;
  // The last device is removed, and with it all that the driver has, before the system unloads it.
  driver->DriverUnload = [](PDRIVER_OBJECT) {};
  driver->MajorFunction[IRP_MJ_CREATE] = &dispatchCreate;
  driver->MajorFunction[IRP_MJ_CLEANUP] = &dispatchEnd;
  driver->MajorFunction[IRP_MJ_CLOSE] = &dispatchEnd;
  driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = &dispatchControl;
  driver->MajorFunction[IRP_MJ_PNP] = &dispatchPnp;
  driver->MajorFunction[IRP_MJ_POWER] = &dispatchOther;
  driver->MajorFunction[IRP_MJ_SYSTEM_CONTROL] = &dispatchOther;
  return STATUS_SUCCESS;
}

}  // namespace

DeviceUse::DeviceUse(Extension& extension)
    : lock_(extension.removeLock),
      held_(NT_SUCCESS(IoAcquireRemoveLockEx(&lock_, this, "", 0, sizeof(IO_REMOVE_LOCK)))) {}

DeviceUse::~DeviceUse() {
  if (held_) IoReleaseRemoveLockEx(&lock_, this, sizeof(IO_REMOVE_LOCK));
}

void DeviceUse::endAndWait() {
  held_ = false;
  IoReleaseRemoveLockAndWaitEx(&lock_, this, sizeof(IO_REMOVE_LOCK));
}

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information) {
  irp->IoStatus.Status = status;
  irp->IoStatus.Information = information;
  IoCompleteRequest(irp, IO_NO_INCREMENT);
  return status;
}

NTSTATUS passDown(Extension& extension, PIRP irp) {
  IoSkipCurrentIrpStackLocation(irp);
  return IoCallDriver(extension.lower, irp);
}

NTSTATUS NTAPI dispatchOther(PDEVICE_OBJECT device, PIRP irp) {
  Extension& extension = extensionOf(device);
  const DeviceUse use{extension};
  return use ? passDown(extension, irp) : complete(irp, STATUS_DELETE_PENDING);
}

}  // namespace device

extern "C" VQS_LOAD_CODE [[clang::no_stack_protector]] NTSTATUS NTAPI DriverEntry(PDRIVER_OBJECT driver,
                                                                                  PUNICODE_STRING /*registryPath*/) {
  device::runtime::chooseStackCookie();
  return device::enter(driver);
}
