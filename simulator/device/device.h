// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/simulation.h"

namespace device {

/// How far the system has come with a device.
enum class PnpState : UCHAR {
  kAdded,
  /// clients can open it
  kStarted,
  /// the system wants to remove it, and may change its mind: what is open goes on, and nobody else gets in
  kRemovePending,
  /// nothing goes on, but handles may still be open
  kRemoved
};

/// What the system keeps with the device object. Zero bytes at first.
struct Extension {
  PDEVICE_OBJECT lower;
  UNICODE_STRING interfaceName;
  IO_REMOVE_LOCK removeLock;
  Simulation* simulation;
  PnpState state;
  /// what it was before the system wanted to remove the device
  PnpState stateBefore;
  bool isInterfaceEnabled;
};

inline Extension& extensionOf(PDEVICE_OBJECT device) { return *static_cast<Extension*>(device->DeviceExtension); }

/// Keeps a device from being removed for as long as it lives, unless it is being removed already.
class DeviceUse {
 public:
  explicit DeviceUse(Extension& extension);
  ~DeviceUse();
  DeviceUse(DeviceUse&&) = delete;
  explicit operator bool() const { return held_; }

  /// Ends this use and waits for the end of all others. No other begins from now on.
  void endAndWait();

 private:
  IO_REMOVE_LOCK& lock_;
  bool held_;
};

NTSTATUS complete(PIRP irp, NTSTATUS status, ULONG_PTR information = 0);
/// Hands a request to the device below, which completes it.
NTSTATUS passDown(Extension& extension, PIRP irp);

NTSTATUS NTAPI addDevice(PDRIVER_OBJECT driver, PDEVICE_OBJECT physicalDevice);
NTSTATUS NTAPI dispatchPnp(PDEVICE_OBJECT device, PIRP irp);
/// Requests that concern the device below alone: those of power management too, for there is no power to manage.
NTSTATUS NTAPI dispatchOther(PDEVICE_OBJECT device, PIRP irp);

// What clients ask for is done at once, on their threads: no request is ever pending, and none could be cancelled.
NTSTATUS NTAPI dispatchCreate(PDEVICE_OBJECT device, PIRP irp);
NTSTATUS NTAPI dispatchControl(PDEVICE_OBJECT device, PIRP irp);
/// Ends a session, at the clean-up of its handle or, where the system sends none, at the close of its file.
NTSTATUS NTAPI dispatchEnd(PDEVICE_OBJECT device, PIRP irp);

}  // namespace device
