// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/simulation.h"

namespace device {

/// What the system keeps with the device object. Zero bytes at first.
struct Extension {
  PDEVICE_OBJECT lower;
  UNICODE_STRING interfaceName;
  IO_REMOVE_LOCK removeLock;
  Simulation* simulation;
  /// Requests are carried out between start and stop.
  bool started;
};

inline Extension& extensionOf(PDEVICE_OBJECT device) { return *static_cast<Extension*>(device->DeviceExtension); }

/// Keeps a device from being removed for as long as it lives, unless it is being removed already.
class DeviceUse {
 public:
  explicit DeviceUse(Extension& extension);
  ~DeviceUse();
  DeviceUse(DeviceUse&&) = delete;
  explicit operator bool() const { return held_; }

 private:
  IO_REMOVE_LOCK& lock_;
  bool held_;
};

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information = 0);
/// Hands a request to the device below, which completes it.
NTSTATUS passDown(Extension& extension, PIRP irp);

NTSTATUS NTAPI addDevice(PDRIVER_OBJECT driver, PDEVICE_OBJECT physicalDevice);
NTSTATUS NTAPI dispatchPnp(PDEVICE_OBJECT device, PIRP irp);
NTSTATUS NTAPI dispatchPower(PDEVICE_OBJECT device, PIRP irp);
NTSTATUS NTAPI dispatchOther(PDEVICE_OBJECT device, PIRP irp);

NTSTATUS NTAPI dispatchCreate(PDEVICE_OBJECT device, PIRP irp);
NTSTATUS NTAPI dispatchControl(PDEVICE_OBJECT device, PIRP irp);
/// Ends a session, at the clean-up of its handle or, where the system sends none, at the close of its file.
NTSTATUS NTAPI dispatchEnd(PDEVICE_OBJECT device, PIRP irp);

}  // namespace device
