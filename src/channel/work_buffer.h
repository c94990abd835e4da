// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>

#include "src/channel/windows_api.h"

namespace vqs {

/// count * size, saturating: what saturates cannot be allocated.
constexpr std::size_t saturatingProduct(std::size_t count, std::size_t size) {
  constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
  return size != 0 && count > kMost / size ? kMost : count * size;
}

/// The runtime's allocator. Out of line: a compiler that sees both leaves out memory that nothing reads.
struct RuntimeMemory {
  static void* allocate(std::size_t size);
  static void release(void* memory);
};

/// The runtime's allocator, for memory that is written before it is read.
struct UnclearedMemory {
  static void* allocate(std::size_t size);
  static void release(void* memory) { RuntimeMemory::release(memory); }
};

/// The process heap, shared by every module of the process.
struct ProcessHeapMemory {
  static void* allocate(std::size_t size) { return HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, size); }
  static void release(void* memory) { HeapFree(GetProcessHeap(), 0, memory); }
};

/// The process heap, for memory that is written before it is read.
struct UnclearedProcessHeapMemory {
  static void* allocate(std::size_t size) { return HeapAlloc(GetProcessHeap(), 0, size); }
  static void release(void* memory) { ProcessHeapMemory::release(memory); }
};

/// Memory of one call, zero-filled but for that of the Uncleared ones, released with its scope. False when it could not
/// be allocated.
template <class Memory>
class WorkBuffer {
 public:
  explicit WorkBuffer(std::size_t size) : size_(size == 0 ? 1 : size), memory_(Memory::allocate(size_)) {}
  ~WorkBuffer() { reset(); }
  WorkBuffer(WorkBuffer&& other) noexcept : size_(other.size_), memory_(other.handOver()) {}
  WorkBuffer& operator=(WorkBuffer&&) = delete;

  explicit operator bool() const { return memory_ != nullptr; }
  [[nodiscard]] std::span<std::byte> bytes() const { return {static_cast<std::byte*>(memory_), size_}; }

  /// The memory as one record.
  template <class Record>
  [[nodiscard]] Record& as() const {
    static_assert(std::is_trivially_copyable_v<Record>);
    return *static_cast<Record*>(memory_);
  }

  /// The memory from an offset on, as an array.
  template <class Record>
  [[nodiscard]] std::span<Record> arrayAt(std::size_t offset, std::size_t count) const {
    static_assert(std::is_trivially_copyable_v<Record>);
    return {reinterpret_cast<Record*>(static_cast<std::byte*>(memory_) + offset), count};
  }

  void reset() {
    if (memory_ != nullptr) Memory::release(std::exchange(memory_, nullptr));
  }

  /// Hands the memory to whoever called the library.
  void* handOver() { return std::exchange(memory_, nullptr); }

 private:
  std::size_t size_;
  void* memory_;
};

/// Whether there is memory for a record now. Where callers know a lack of it as a result, it is asked for though the
/// record is elsewhere: on the stack, which takes less than half the time, or nowhere.
template <class Record, class Memory = UnclearedMemory>
bool isThereMemoryFor() {
  return static_cast<bool>(WorkBuffer<Memory>{sizeof(Record)});
}

using RuntimeBuffer = WorkBuffer<RuntimeMemory>;
using UnclearedBuffer = WorkBuffer<UnclearedMemory>;
using ProcessHeapBuffer = WorkBuffer<ProcessHeapMemory>;
using UnclearedProcessHeapBuffer = WorkBuffer<UnclearedProcessHeapMemory>;

/// One zero-filled record in memory of its own. False when it could not be allocated.
template <class Record, class Memory = RuntimeMemory>
class HeapRecord {
 public:
  explicit operator bool() const { return static_cast<bool>(memory_); }
  Record& operator*() const { return memory_.template as<Record>(); }
  Record* operator->() const { return get(); }
  [[nodiscard]] Record* get() const { return &**this; }

  void reset() { memory_.reset(); }

  /// Hands the record to whoever called the library.
  Record* handOver() { return static_cast<Record*>(memory_.handOver()); }

 private:
  WorkBuffer<Memory> memory_{sizeof(Record)};
};

template <class Record>
using ProcessHeapRecord = HeapRecord<Record, ProcessHeapMemory>;

}  // namespace vqs
