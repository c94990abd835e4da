// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "host/memory.h"

namespace host {

/// Plain values in the order of their arrival. A list is never destroyed: programs use what the host keeps up to their
/// very end.
template <class T>
class List {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  /// False when there is no memory for one more.
  bool add(const T& value) {
    if (count_ == room_ && !grow()) return false;
    values_[count_++] = value;
    return true;
  }
  void remove(T* place) {
    std::copy(place + 1, end(), place);
    --count_;
  }

  [[nodiscard]] T* begin() { return values_; }
  [[nodiscard]] T* end() { return values_ + count_; }

 private:
  bool grow() {
    const std::size_t room = room_ == 0 ? 16 : 2 * room_;
    // NOLINTNEXTLINE(bugprone-sizeof-expression): where values are pointers, pointers are kept.
    void* const grown = resized(static_cast<void*>(values_), room * sizeof(T));
    if (grown == nullptr) return false;
    values_ = static_cast<T*>(grown);
    room_ = room;
    return true;
  }

  T* values_ = nullptr;
  std::size_t count_ = 0;
  std::size_t room_ = 0;
};

}  // namespace host
