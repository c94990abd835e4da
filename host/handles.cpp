// SPDX-License-Identifier: Apache-2.0
#include "host/handles.h"

#include <atomic>
#include <cstdint>

#include "host/attachments.h"
#include "host/call_hook.h"

namespace host {

HANDLE newHandle() {
  constinit static std::atomic<std::uintptr_t> last{0x100};
  return reinterpret_cast<HANDLE>(last += 4);
}

}  // namespace host

BOOL CloseHandle(HANDLE handle) {
  static_cast<void>(host::permit("CloseHandle"));
  return host::closeDevice(handle) || host::closeEvent(handle) ? TRUE : FALSE;
}
