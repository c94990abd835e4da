// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pthread.h>

namespace host {

/// Held by one thread at a time. It needs no destruction: programs call up to their very end.
class Mutex {
 public:
  void lock() { pthread_mutex_lock(&native_); }
  void unlock() { pthread_mutex_unlock(&native_); }
  [[nodiscard]] pthread_mutex_t* native() { return &native_; }

 private:
  pthread_mutex_t native_ = PTHREAD_MUTEX_INITIALIZER;
};

}  // namespace host
