// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "host/memory.h"

namespace host {

/// What several can hold. Where there is no memory for one, `new` gives null: callers are C programs, and nothing is
/// thrown at them.
class Counted {
 public:
  static void* operator new(std::size_t size) noexcept { return resized(nullptr, size); }
  static void operator delete(void* memory) { std::free(memory); }

  void hold() { ++holders_; }
  /// True when nobody holds it any more.
  [[nodiscard]] bool letGo() { return --holders_ == 0; }

 private:
  std::atomic<std::uint32_t> holders_ = 1;
};

/// Holds an object, or nothing. The last holder deletes it.
template <class T>
class Shared {
 public:
  Shared() = default;
  /// Takes the place of a holder.
  explicit Shared(T* held) : object_(held) {}
  /// One more holder.
  static Shared of(T* object) {
    if (object != nullptr) object->hold();
    return Shared{object};
  }
  Shared(Shared&& other) noexcept : object_(other.handOver()) {}
  Shared& operator=(Shared&&) = delete;
  ~Shared() {
    if (object_ != nullptr && object_->letGo()) delete object_;
  }

  explicit operator bool() const { return object_ != nullptr; }
  T* operator->() const { return object_; }
  [[nodiscard]] T* get() const { return object_; }
  /// Somebody else takes its place.
  T* handOver() { return std::exchange(object_, nullptr); }

 private:
  T* object_ = nullptr;
};

}  // namespace host
