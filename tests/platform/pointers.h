// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

namespace test {

/// A pointer that only travels; nobody follows it.
inline void* marker() { return reinterpret_cast<void*>(0x1122334455667788); }

/// Two names of one routine share its address.
template <class Function>
void expectOneRoutine(Function* one, Function* other) {
  Function* volatile first = one;
  Function* volatile second = other;
  EXPECT_EQ(reinterpret_cast<void*>(first), reinterpret_cast<void*>(second));
}

}  // namespace test
