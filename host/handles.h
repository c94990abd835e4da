// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <mutex>

#include "host/list.h"
#include "host/mutex.h"
#include "host/shared.h"
#include "host/windows_api.h"

namespace host {

/// A number that no handle has had, higher than all before.
std::uintptr_t newHandle();

/// The open handles of one kind of object.
template <class T>
class HandleTable {
 public:
  /// A new handle; null when there is no memory for it.
  HANDLE add(Shared<T> object) {
    const std::lock_guard lock{mutex_};
    const Entry entry{newHandle(), object.get()};
    if (!entries_.add(entry)) return nullptr;
    object.handOver();
    return reinterpret_cast<HANDLE>(entry.handle);
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
    std::uintptr_t handle;
    T* object;
  };

  /// Handles ascend, so that a program may leave very many open.
  Entry* entryOf(HANDLE handle) {
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    Entry* const found = std::ranges::lower_bound(entries_, number, {}, &Entry::handle);
    return found != entries_.end() && found->handle == number ? found : nullptr;
  }

  Mutex mutex_;
  List<Entry> entries_;
};

/// Closes a handle of that kind; false when it is none.
bool closeDevice(HANDLE handle);
bool closeEvent(HANDLE handle);

}  // namespace host
