// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

namespace test {

/// What of the runtime can be made to fail.
enum class Fault {
  /// calloc and malloc, which are for one call, or for the caller
  kAllocation,
  kOpen,
  kSeek,
  kTell,
  kRead,
  kWrite,
  /// realloc, with which the host and the driver keep what they have
  kGrowth,
  /// operator new in all forms, of the C++ library's own code too
  kNew,
  /// mmap and memfd_create
  kMap,
  /// pthread_create
  kThread
};

/// Watches the runtime calls of the code under test and makes one of them fail: a program that links vqs_faults has its
/// own calls led through here (the process heap of the host ends in them too). One may be alive at a time; the calls of
/// its thread are counted while it lives.
class Faults {
 public:
  Faults();
  ~Faults();
  Faults(const Faults&) = delete;
  Faults& operator=(const Faults&) = delete;

  /// The nth call from now on fails, counted from 1.
  void fail(Fault what, int nth);
  /// From the nth call on, every one fails.
  void failFrom(Fault what, int nth);

  /// Runs something right before the nth call from now on, counted from 1; its own runtime calls are not counted.
  void before(Fault what, int nth, std::function<void()> action);

  /// Calls since this object was made.
  [[nodiscard]] int calls(Fault what) const;
  /// Allocations since this object was made that have not been freed.
  [[nodiscard]] int outstanding() const;
  /// Streams opened since this object was made that have not been closed.
  [[nodiscard]] int openStreams() const;
  /// The most bytes that were allocated at once since this object was made.
  [[nodiscard]] unsigned long long peakBytes() const;
};

}  // namespace test
