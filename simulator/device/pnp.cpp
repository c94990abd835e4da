// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/device.h"

namespace device {
namespace {

constexpr GUID kInterfaceClass = {0x9DC9718B, 0x59BF, 0x43EE, {0x94, 0xED, 0x34, 0xBB, 0x82, 0x3D, 0xCE, 0xDF}};

NTSTATUS NTAPI signalCompletion(PDEVICE_OBJECT /*device*/, PIRP /*irp*/, PVOID event) {
  KeSetEvent(static_cast<PKEVENT>(event), IO_NO_INCREMENT, FALSE);
  return STATUS_MORE_PROCESSING_REQUIRED;
}

/// Lets the device below do its part, and has the request back then.
NTSTATUS passDownAndWait(Extension& extension, PIRP irp) {
  KEVENT done;
  KeInitializeEvent(&done, NotificationEvent, FALSE);
  IoCopyCurrentIrpStackLocationToNext(irp);
  IoSetCompletionRoutine(irp, &signalCompletion, &done, TRUE, TRUE, TRUE);
  if (IoCallDriver(extension.lower, irp) == STATUS_PENDING)
    KeWaitForSingleObject(&done, Executive, KernelMode, FALSE, nullptr);
  return irp->IoStatus.Status;
}

NTSTATUS passDownAsDone(Extension& extension, PIRP irp) {
  irp->IoStatus.Status = STATUS_SUCCESS;
  return passDown(extension, irp);
}

NTSTATUS startSimulation(Extension& extension) {
  if (extension.simulation != nullptr) return STATUS_SUCCESS;
  Simulation* const simulation = Simulation::create();
  if (simulation == nullptr) return STATUS_INSUFFICIENT_RESOURCES;
  const NTSTATUS status = simulation->start();
  if (NT_SUCCESS(status))
    extension.simulation = simulation;
  else
    Simulation::destroy(simulation);
  return status;
}

NTSTATUS enableInterface(Extension& extension) {
  if (extension.isInterfaceEnabled) return STATUS_SUCCESS;
  const NTSTATUS status = IoSetDeviceInterfaceState(&extension.interfaceName, TRUE);
  extension.isInterfaceEnabled = NT_SUCCESS(status);
  return status;
}

void disableInterface(Extension& extension) {
  if (extension.isInterfaceEnabled) IoSetDeviceInterfaceState(&extension.interfaceName, FALSE);
  extension.isInterfaceEnabled = false;
}

NTSTATUS start(Extension& extension, PIRP irp) {
  NTSTATUS status = passDownAndWait(extension, irp);
  if (NT_SUCCESS(status)) status = startSimulation(extension);
  if (NT_SUCCESS(status)) status = enableInterface(extension);
  if (NT_SUCCESS(status)) extension.state = PnpState::kStarted;
  return complete(irp, status);
}

NTSTATUS queryRemove(Extension& extension, PIRP irp) {
  extension.stateBefore = extension.state;
  extension.state = PnpState::kRemovePending;
  return passDownAsDone(extension, irp);
}

/// Also sent when nothing was pending, because a driver above has refused.
NTSTATUS cancelRemove(Extension& extension, PIRP irp) {
  if (extension.state != PnpState::kRemovePending) return passDownAsDone(extension, irp);
  irp->IoStatus.Status = STATUS_SUCCESS;
  passDownAndWait(extension, irp);
  extension.state = extension.stateBefore;
  return complete(irp, STATUS_SUCCESS);
}

NTSTATUS surpriseRemove(Extension& extension, PIRP irp) {
  extension.state = PnpState::kRemoved;
  disableInterface(extension);
  if (extension.simulation != nullptr) extension.simulation->stop();
  return passDownAsDone(extension, irp);
}

NTSTATUS remove(PDEVICE_OBJECT device, DeviceUse& use, PIRP irp) {
  Extension& extension = extensionOf(device);
  extension.state = PnpState::kRemoved;
  disableInterface(extension);
  const NTSTATUS status = passDownAsDone(extension, irp);
  use.endAndWait();
  if (extension.simulation != nullptr) Simulation::destroy(extension.simulation);
  RtlFreeUnicodeString(&extension.interfaceName);
  IoDetachDevice(extension.lower);
  IoDeleteDevice(device);
  return status;
}

/// No device may call itself pageable above one that does not. This one could: nothing of the system's paging goes
/// through it; but its code is resident, so that it can be called in either way and what the device below says is
/// right.
ULONG powerFlagsOf(PDEVICE_OBJECT device) { return device->Flags & (DO_POWER_PAGABLE | DO_POWER_INRUSH); }

}  // namespace

NTSTATUS NTAPI addDevice(PDRIVER_OBJECT driver, PDEVICE_OBJECT physicalDevice) {
  PDEVICE_OBJECT device = nullptr;
  NTSTATUS status =
      IoCreateDevice(driver, sizeof(Extension), nullptr, FILE_DEVICE_UNKNOWN, FILE_DEVICE_SECURE_OPEN, FALSE, &device);
  if (!NT_SUCCESS(status)) return status;
  Extension& extension = extensionOf(device);
  IoInitializeRemoveLockEx(&extension.removeLock, 0, 0, 0, sizeof(IO_REMOVE_LOCK));
  status = IoRegisterDeviceInterface(physicalDevice, &kInterfaceClass, nullptr, &extension.interfaceName);
  if (NT_SUCCESS(status)) {
    extension.lower = IoAttachDeviceToDeviceStack(device, physicalDevice);
    if (extension.lower == nullptr) {
      RtlFreeUnicodeString(&extension.interfaceName);
      status = STATUS_NO_SUCH_DEVICE;
    }
  }
  if (!NT_SUCCESS(status)) {
    IoDeleteDevice(device);
    return status;
  }
  device->Flags |= DO_BUFFERED_IO | powerFlagsOf(extension.lower);
  device->Flags &= ~static_cast<ULONG>(DO_DEVICE_INITIALIZING);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI dispatchPnp(PDEVICE_OBJECT device, PIRP irp) {
  Extension& extension = extensionOf(device);
  DeviceUse use{extension};
  if (!use) return complete(irp, STATUS_DELETE_PENDING);
  switch (IoGetCurrentIrpStackLocation(irp)->MinorFunction) {
    case IRP_MN_START_DEVICE:
      return start(extension, irp);
    case IRP_MN_QUERY_REMOVE_DEVICE:
      return queryRemove(extension, irp);
    case IRP_MN_CANCEL_REMOVE_DEVICE:
      return cancelRemove(extension, irp);
    case IRP_MN_SURPRISE_REMOVAL:
      return surpriseRemove(extension, irp);
    case IRP_MN_REMOVE_DEVICE:
      return remove(device, use, irp);
    case IRP_MN_QUERY_STOP_DEVICE:
      // Stopped, the device would have to keep requests for later, which it does not. It has no resources to give back.
      return complete(irp, STATUS_UNSUCCESSFUL);
    case IRP_MN_STOP_DEVICE:
    case IRP_MN_CANCEL_STOP_DEVICE:
      return passDownAsDone(extension, irp);
    default:
      return passDown(extension, irp);
  }
}

}  // namespace device
