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

NTSTATUS start(Extension& extension, PIRP irp) {
  NTSTATUS status = passDownAndWait(extension, irp);
  if (NT_SUCCESS(status)) status = startSimulation(extension);
  if (NT_SUCCESS(status)) {
    extension.started = true;
    status = IoSetDeviceInterfaceState(&extension.interfaceName, TRUE);
  }
  return complete(irp, status);
}

void stop(Extension& extension) {
  extension.started = false;
  IoSetDeviceInterfaceState(&extension.interfaceName, FALSE);
}

NTSTATUS remove(PDEVICE_OBJECT device, Extension& extension, PIRP irp) {
  stop(extension);
  IoAcquireRemoveLockEx(&extension.removeLock, irp, "", 0, sizeof(IO_REMOVE_LOCK));
  IoReleaseRemoveLockAndWaitEx(&extension.removeLock, irp, sizeof(IO_REMOVE_LOCK));
  if (extension.simulation != nullptr) Simulation::destroy(extension.simulation);
  RtlFreeUnicodeString(&extension.interfaceName);
  irp->IoStatus.Status = STATUS_SUCCESS;
  const PDEVICE_OBJECT lower = extension.lower;
  const NTSTATUS status = passDown(extension, irp);
  IoDetachDevice(lower);
  IoDeleteDevice(device);
  return status;
}

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
  device->Flags |= DO_BUFFERED_IO | DO_POWER_PAGABLE;
  device->Flags &= ~static_cast<ULONG>(DO_DEVICE_INITIALIZING);
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI dispatchPnp(PDEVICE_OBJECT device, PIRP irp) {
  Extension& extension = extensionOf(device);
  switch (IoGetCurrentIrpStackLocation(irp)->MinorFunction) {
    case IRP_MN_START_DEVICE:
      return start(extension, irp);
    case IRP_MN_REMOVE_DEVICE:
      return remove(device, extension, irp);
    case IRP_MN_STOP_DEVICE:
    case IRP_MN_SURPRISE_REMOVAL:
      stop(extension);
      [[fallthrough]];
    case IRP_MN_QUERY_STOP_DEVICE:
    case IRP_MN_CANCEL_STOP_DEVICE:
    case IRP_MN_QUERY_REMOVE_DEVICE:
    case IRP_MN_CANCEL_REMOVE_DEVICE:
      irp->IoStatus.Status = STATUS_SUCCESS;
      [[fallthrough]];
    default:
      return passDown(extension, irp);
  }
}

}  // namespace device
