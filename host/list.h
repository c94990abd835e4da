// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <type_traits>

#include "host/memory.h"

namespace host {

/// A growing array of plain values. It has no destructor, because a program may call the host until its process ends:
/// call `clear` to give the memory of a list back.
template <class T>
class List {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  /// At the end; false when there is no memory for one more.
  bool add(const T& value) { return insert(end(), value); }
  /// The same, before `place`.
  bool insert(const T* place, const T& value) {
    const auto index = place - begin();
    if (count_ == room_ && !grow()) return false;
    T* const next = begin() + index;
    std::copy_backward(next, end(), end() + 1);
    *next = value;
    ++count_;
    return true;
  }
  void remove(T* place) {
    std::copy(place + 1, end(), place);
    --count_;
  }
  /// Gives the memory back.
  void clear() {
    std::free(static_cast<void*>(values_));
    *this = {};
  }

  [[nodiscard]] T* begin() { return values_; }
  [[nodiscard]] T* end() { return values_ + count_; }
  [[nodiscard]] bool isEmpty() const { return count_ == 0; }

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
