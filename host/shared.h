// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "host/memory.h"

namespace host {

/// An object with a count of its holders. `new` gives null when there is no memory, because callers may be C programs,
/// which cannot catch exceptions.
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
  /// Takes over a hold that has been counted already.
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
  /// Gives the hold away without ending it.
  T* handOver() { return std::exchange(object_, nullptr); }

 private:
  T* object_ = nullptr;
};

}  // namespace host
