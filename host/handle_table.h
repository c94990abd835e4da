// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <mutex>
#include <utility>

#include "host/list.h"
#include "host/mutex.h"
#include "host/shared.h"
#include "host/types.h"

namespace host {

/// The open handles of one kind of object.
template <class T>
class HandleTable {
 public:
  /// False when there is no memory for one more.
  bool add(HANDLE handle, Shared<T> object) {
    const std::lock_guard lock{mutex_};
    if (!entries_.insert(placeOf(handle), {handle, object.get()})) return false;
    object.handOver();
    return true;
  }

  /// What a handle stands for; nothing when it is not open.
  Shared<T> find(HANDLE handle) {
    const std::lock_guard lock{mutex_};
    const Entry* const found = entryOf(handle);
    return found == nullptr ? Shared<T>{} : Shared<T>::of(found->object);
  }

  /// The same, and the handle is open no more.
  Shared<T> forget(HANDLE handle) {
    const std::lock_guard lock{mutex_};
    Entry* const found = entryOf(handle);
    if (found == nullptr) return {};
    Shared<T> object{found->object};
    entries_.remove(found);
    return object;
  }

 private:
  struct Entry {
    HANDLE handle;
    T* object;
  };

  /// Handles ascend, so that a program may leave very many open.
  Entry* placeOf(HANDLE handle) { return std::ranges::lower_bound(entries_, handle, {}, &Entry::handle); }
  Entry* entryOf(HANDLE handle) {
    Entry* const found = placeOf(handle);
    return found != entries_.end() && found->handle == handle ? found : nullptr;
  }

  Mutex mutex_;
  List<Entry> entries_;
};

}  // namespace host
