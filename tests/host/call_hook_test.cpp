// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/host.h"

namespace test {
namespace {

TEST(CallHook, sees_every_call_with_its_arguments) {
  std::vector<std::string> calls;
  host::setCallHook([&](std::string_view call) {
    calls.emplace_back(call);
    return true;
  });
  void* memory = HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, 3972);
  HeapFree(GetProcessHeap(), 0, memory);
  EXPECT_EQ(GetFileVersionInfoSizeA("none.dll", nullptr), 0U);
  CloseHandle(nullptr);
  host::setCallHook(nullptr);
  HeapFree(GetProcessHeap(), 0, HeapAlloc(GetProcessHeap(), 0, 1));
  EXPECT_EQ(calls, (std::vector<std::string>{"HeapAlloc(8, 3972)", "HeapFree(0)", "GetFileVersionInfoSizeA(none.dll)",
                                             "CloseHandle()"}));
}

TEST(CallHook, makes_a_call_fail) {
  host::setCallHook([](std::string_view) { return false; });
  GUID interfaceClass{};
  ULONG length = 5;
  EXPECT_EQ(HeapAlloc(GetProcessHeap(), 0, 1), nullptr);
  EXPECT_EQ(CM_Get_Device_Interface_List_SizeA(&length, &interfaceClass, nullptr, 0), CR_FAILURE);
  EXPECT_EQ(length, 5U);
  EXPECT_EQ(CreateFileW(u"x", 0, 0, nullptr, 0, 0, nullptr), INVALID_HANDLE_VALUE);
  host::setCallHook(nullptr);
}

}  // namespace
}  // namespace test
