// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

namespace device {

/// The named event that tells everybody of changed application outputs. An object of zero bytes is none.
class OutputEvent {
 public:
  /// Not signalled at first. Everybody may wait for it, the system alone may set it.
  NTSTATUS create();
  void close();
  void set(bool signalled);

 private:
  HANDLE handle_;
};

}  // namespace device
