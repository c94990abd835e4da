// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/windows_api.h"

namespace host {

/// What a handle stands for.
class Object {
 public:
  virtual ~Object() = default;
  /// Called once, when the handle is closed.
  virtual void closed(HANDLE handle) = 0;
};

HANDLE registerHandle(std::shared_ptr<Object> object);
/// Null for a handle that is not open.
std::shared_ptr<Object> findHandle(HANDLE handle);
std::shared_ptr<Object> forgetHandle(HANDLE handle);

template <class T>
std::shared_ptr<T> findHandleOf(HANDLE handle) {
  return std::dynamic_pointer_cast<T>(findHandle(handle));
}

}  // namespace host
