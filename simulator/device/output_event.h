// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

namespace device {

/// Under which name the system has the event. Builds for tests have another.
const wchar_t* outputEventName();

/// The named event that tells everybody of changed application outputs. An object of zero bytes is none.
///
/// The folder of its name does not exist yet when the system starts its first devices, and anybody may have given the
/// name to something else: no device depends on it, and whoever misses it tries again.
class OutputEvent {
 public:
  /// Makes the event, unless that is done: in a thread of the system, whose the event is then. Everybody may wait for
  /// it, the system alone may set it; an event of the name that somebody else has made is taken over, and is like that
  /// from then on for whoever opens it.
  void make(bool signalled);
  [[nodiscard]] bool isMade() const { return event_ != nullptr; }
  void close();
  void set(bool signalled);

 private:
  bool take(HANDLE handle);

  HANDLE handle_;
  PKEVENT event_;
};

}  // namespace device
