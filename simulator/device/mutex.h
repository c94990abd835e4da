// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "simulator/device/kernel.h"

namespace device {

/// Held by one thread at a time, at passive level throughout: the thread may call everything that the kernel has.
/// (Not a KMUTEX: Wine 8 loses their release when several threads wait.)
class Mutex {
 public:
  void initialize() { ExInitializeFastMutex(&mutex_); }
  void lock() {
    KeEnterCriticalRegion();
    ExAcquireFastMutexUnsafe(&mutex_);
  }
  void unlock() {
    ExReleaseFastMutexUnsafe(&mutex_);
    KeLeaveCriticalRegion();
  }

 private:
  FAST_MUTEX mutex_;
};

class LockGuard {
 public:
  explicit LockGuard(Mutex& mutex) : mutex_(mutex) { mutex_.lock(); }
  ~LockGuard() { mutex_.unlock(); }
  LockGuard(LockGuard&&) = delete;

 private:
  Mutex& mutex_;
};

}  // namespace device
