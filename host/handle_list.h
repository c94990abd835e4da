// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdlib>
#include <span>

#include "host/types.h"

namespace host {

/// Handles that are open, each as often as it was opened.
class HandleList {
 public:
  HandleList() = default;
  ~HandleList() { std::free(static_cast<void*>(handles_)); }
  HandleList(HandleList&&) = delete;

  /// False when there is no memory for one more.
  bool add(HANDLE handle) {
    if (count_ == room_ && !grow()) return false;
    handles_[count_++] = handle;
    return true;
  }
  /// False when it is not open.
  bool remove(HANDLE handle) {
    for (HANDLE& held : all()) {
      if (held != handle) continue;
      held = handles_[--count_];
      return true;
    }
    return false;
  }
  void clear() { count_ = 0; }

  [[nodiscard]] std::span<HANDLE> all() { return {handles_, count_}; }
  [[nodiscard]] bool isEmpty() const { return count_ == 0; }

 private:
  bool grow() {
    const std::size_t room = room_ == 0 ? 16 : 2 * room_;
    void* const grown = std::realloc(static_cast<void*>(handles_), room * sizeof(HANDLE));
    if (grown == nullptr) return false;
    handles_ = static_cast<HANDLE*>(grown);
    room_ = room;
    return true;
  }

  HANDLE* handles_ = nullptr;
  std::size_t count_ = 0;
  std::size_t room_ = 0;
};

}  // namespace host
