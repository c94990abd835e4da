// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>

namespace host {

/// The result of a function, or `failure` when there is not enough memory for it: callers are C programs, and nothing
/// is thrown at them.
template <class Result, class Function>
Result guarded(Result failure, const Function& function) noexcept {
  try {
    return function();
  } catch (const std::exception&) {
    return failure;
  }
}

}  // namespace host
