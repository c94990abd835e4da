// SPDX-License-Identifier: Apache-2.0
#include "host/handles.h"

#include <map>
#include <mutex>
#include <utility>

#include "host/call_hook.h"
#include "host/guarded.h"

namespace host {
namespace {

std::mutex handleMutex;
std::uintptr_t lastHandle = 0x100;

/// Made at its first use, which may come before other initialisers have run, and never destroyed: programs close
/// handles up to their very end.
auto& openHandles() {
  static auto& map = *new std::map<HANDLE, std::shared_ptr<Object>>;
  return map;
}

}  // namespace

HANDLE registerHandle(std::shared_ptr<Object> object) {
  const std::lock_guard lock{handleMutex};
  lastHandle += 4;
  const auto handle = reinterpret_cast<HANDLE>(lastHandle);
  openHandles().emplace(handle, std::move(object));
  return handle;
}

std::shared_ptr<Object> findHandle(HANDLE handle) {
  const std::lock_guard lock{handleMutex};
  const auto found = openHandles().find(handle);
  return found == openHandles().end() ? nullptr : found->second;
}

std::shared_ptr<Object> forgetHandle(HANDLE handle) {
  const std::lock_guard lock{handleMutex};
  const auto found = openHandles().extract(handle);
  return found.empty() ? nullptr : found.mapped();
}

}  // namespace host

BOOL CloseHandle(HANDLE handle) {
  return host::guarded(FALSE, [&] {
    static_cast<void>(host::permit("CloseHandle"));
    const auto object = host::forgetHandle(handle);
    if (object == nullptr) return FALSE;
    object->closed(handle);
    return TRUE;
  });
}
