// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "host/host.h"

namespace test {
namespace {

TEST(ProcessHeap, zeroes_memory_when_asked) {
  auto* memory = static_cast<unsigned char*>(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, 100));
  ASSERT_NE(memory, nullptr);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(memory[i], 0);
  EXPECT_TRUE(HeapFree(GetProcessHeap(), 0, memory));
}

TEST(ProcessHeap, gives_memory_for_nothing_too) {
  void* memory = HeapAlloc(GetProcessHeap(), 0, 0);
  EXPECT_NE(memory, nullptr);
  EXPECT_TRUE(HeapFree(GetProcessHeap(), 0, memory));
}

TEST(ProcessHeap, refuses_what_cannot_be_and_other_heaps) {
  volatile SIZE_T tooMuch = std::numeric_limits<SIZE_T>::max() / 4;
  EXPECT_EQ(HeapAlloc(GetProcessHeap(), 0, tooMuch), nullptr);
  EXPECT_EQ(HeapAlloc(nullptr, 0, 1), nullptr);
  EXPECT_FALSE(HeapFree(nullptr, 0, nullptr));
}

}  // namespace
}  // namespace test
