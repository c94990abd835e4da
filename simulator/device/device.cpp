// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/device.h"

namespace device {

DeviceUse::DeviceUse(Extension& extension)
    : lock_(extension.removeLock),
      held_(NT_SUCCESS(IoAcquireRemoveLockEx(&lock_, this, "", 0, sizeof(IO_REMOVE_LOCK)))) {}

DeviceUse::~DeviceUse() {
  if (held_) IoReleaseRemoveLockEx(&lock_, this, sizeof(IO_REMOVE_LOCK));
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

NTSTATUS NTAPI dispatchPower(PDEVICE_OBJECT device, PIRP irp) {
  Extension& extension = extensionOf(device);
  const DeviceUse use{extension};
  PoStartNextPowerIrp(irp);
  if (!use) return complete(irp, STATUS_DELETE_PENDING);
  IoSkipCurrentIrpStackLocation(irp);
  return PoCallDriver(extension.lower, irp);
}

}  // namespace device

extern "C" NTSTATUS NTAPI DriverEntry(PDRIVER_OBJECT driver, PUNICODE_STRING /*registryPath*/) {
  driver->DriverExtension->AddDevice = &device::addDevice;
  // The last device is removed, and with it all that the driver has, before the system unloads it.
  driver->DriverUnload = [](PDRIVER_OBJECT) {};
  driver->MajorFunction[IRP_MJ_CREATE] = &device::dispatchCreate;
  driver->MajorFunction[IRP_MJ_CLEANUP] = &device::dispatchEnd;
  driver->MajorFunction[IRP_MJ_CLOSE] = &device::dispatchEnd;
  driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = &device::dispatchControl;
  driver->MajorFunction[IRP_MJ_PNP] = &device::dispatchPnp;
  driver->MajorFunction[IRP_MJ_POWER] = &device::dispatchPower;
  driver->MajorFunction[IRP_MJ_SYSTEM_CONTROL] = &device::dispatchOther;
  return STATUS_SUCCESS;
}
