// SPDX-License-Identifier: Apache-2.0
#include "host/call_hook.h"

#include <array>
#include <charconv>
#include <memory>
#include <mutex>

#include "host/host.h"

namespace host {
namespace {

std::mutex hookMutex;

/// Never destroyed: calls are made up to the very end of a program.
auto& currentHook() {
  static auto& current = *new std::shared_ptr<const CallHook>;
  return current;
}

std::shared_ptr<const CallHook> hook() {
  const std::lock_guard lock{hookMutex};
  return currentHook();
}

}  // namespace

void setCallHook(CallHook newHook) {
  const std::lock_guard lock{hookMutex};
  currentHook() = newHook ? std::make_shared<const CallHook>(std::move(newHook)) : nullptr;
}

bool callsAreWatched() { return hook() != nullptr; }

bool permitCall(std::string_view call) {
  const auto watcher = hook();
  return watcher == nullptr || (*watcher)(call);
}

std::string describe(std::string_view text) { return std::string{text}; }

std::string describe(std::u16string_view text) {
  std::string narrow;
  for (const char16_t unit : text) narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
  return narrow;
}

std::string describe(std::uint64_t number) {
  std::array<char, 20> digits{};
  const int base = number < 0x100000 ? 10 : 16;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, base).ptr;
  return (base == 16 ? "0x" : "") + std::string{digits.data(), end};
}

std::string describe(const void* pointer) { return pointer == nullptr ? "null" : "pointer"; }

}  // namespace host
