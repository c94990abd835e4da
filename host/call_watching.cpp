// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <mutex>
#include <utility>

#include "host/call_hook.h"
#include "host/host.h"

// For tests: nothing that ships refers to this file, and nothing else of the host needs the C++ library.

namespace host {
namespace {

std::mutex hookMutex;

/// Never destroyed: a program may call the host until its process ends.
auto& currentHook() {
  static auto& current = *new std::shared_ptr<const CallHook>;
  return current;
}

std::shared_ptr<const CallHook> hook() {
  const std::lock_guard lock{hookMutex};
  return currentHook();
}

bool ask(std::string_view call) {
  const auto current = hook();
  return current == nullptr || (*current)(call);
}

}  // namespace

void setCallHook(CallHook newHook) {
  const std::lock_guard lock{hookMutex};
  setWatcher(newHook ? &ask : nullptr);
  currentHook() = newHook ? std::make_shared<const CallHook>(std::move(newHook)) : nullptr;
}

}  // namespace host
