// SPDX-License-Identifier: Apache-2.0
#include "host/call_hook.h"

#include <algorithm>
#include <atomic>
#include <cstdio>

namespace host {
namespace {

constinit std::atomic<Watcher> currentlyWatching = nullptr;

}  // namespace

Watcher currentWatcher() { return currentlyWatching; }
void setWatcher(Watcher watcher) { currentlyWatching = watcher; }

void CallText::add(std::string_view text) {
  const auto kept = text.substr(0, sizeof(text_) - length_);
  std::ranges::copy(kept, text_ + length_);
  length_ += kept.size();
}

void CallText::add(std::u16string_view text) {
  for (const char16_t unit : text) {
    const char narrow = unit < 0x80 ? static_cast<char>(unit) : '?';
    add(std::string_view{&narrow, 1});
  }
}

void CallText::add(std::uint64_t number) {
  char digits[24];
  const auto value = static_cast<unsigned long long>(number);
  const int length = std::snprintf(digits, sizeof(digits), number < 0x100000 ? "%llu" : "0x%llx", value);
  add(std::string_view{digits, static_cast<std::size_t>(length)});
}

void CallText::add(const void* pointer) { add(std::string_view{pointer == nullptr ? "null" : "pointer"}); }

}  // namespace host
