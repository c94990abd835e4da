// SPDX-License-Identifier: Apache-2.0
#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <pthread.h>
#endif

namespace host {

/// A lock without a destructor: a program may call the host until its process ends.
class Mutex {
 public:
#ifdef _WIN32
  void lock() { AcquireSRWLockExclusive(&native_); }
  void unlock() { ReleaseSRWLockExclusive(&native_); }

 private:
  SRWLOCK native_ = SRWLOCK_INIT;
#else
  void lock() { pthread_mutex_lock(&native_); }
  void unlock() { pthread_mutex_unlock(&native_); }
  [[nodiscard]] pthread_mutex_t* native() { return &native_; }

 private:
  pthread_mutex_t native_ = PTHREAD_MUTEX_INITIALIZER;
#endif
};

}  // namespace host
