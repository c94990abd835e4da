// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <map>

#include "tests/windows/scripted_kernel.h"

extern "C" {
extern std::uintptr_t __stack_chk_guard;
[[noreturn]] void __stack_chk_fail();
}

namespace test {
namespace {

constexpr std::uint32_t kPolicyBinary = 0x80222070;
constexpr std::uint32_t kLog = 0x80222058;

using File = ScriptedKernel::File;

struct OpenedKernel : ScriptedKernel {
  File file{};

  explicit OpenedKernel(std::set<std::wstring> known = {L"ExAllocatePool2", L"MmCopyMemory"}) {
    symbols = std::move(known);
    EXPECT_EQ(addDevice(), kSuccess);
    EXPECT_EQ(pnp(kStart), kSuccess);
    EXPECT_EQ(create(file), kSuccess);
    calls({});
  }

  Status load(std::uint64_t address, std::uint64_t size) {
    Bytes buffer = Record{24}.u64(8, size).u64(16, address);
    return control(file, kPolicyBinary, buffer, 24);
  }

  Status startLog() {
    Bytes buffer = Record{32}.u32(4, 7);
    return control(file, kLog, buffer, 32);
  }
};

/// How many allocations there are of each kind.
std::map<std::string, int> kinds(const ScriptedKernel& kernel) {
  std::map<std::string, int> counted;
  for (const auto& [memory, allocation] : kernel.allocated) {
    EXPECT_FALSE(allocation.isExecutable);
    std::string name = allocation.isPaged ? "paged " : "resident ";
    for (int i = 0; i < 4; ++i) name += static_cast<char>(allocation.tag >> 8 * i);
    ++counted[name];
  }
  return counted;
}

TEST(KernelMemory, has_a_tag_for_each_purpose) {
  OpenedKernel kernel;
  ASSERT_EQ(kernel.startLog(), kSuccess);
  const std::map<std::string, int> expected = {{"paged VqsD", 1}, {"paged VqsL", 1}, {"resident VqsS", 1}};
  EXPECT_EQ(kinds(kernel), expected);
  EXPECT_EQ(kernel.calls({"ExAllocatePool2"}).size(), 1U);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelMemory, comes_from_the_older_function_where_there_is_no_other) {
  OpenedKernel kernel{{L"MmCopyMemory"}};
  ASSERT_EQ(kernel.startLog(), kSuccess);
  const std::map<std::string, int> expected = {{"paged VqsD", 1}, {"paged VqsL", 1}, {"resident VqsS", 1}};
  EXPECT_EQ(kinds(kernel), expected);
  EXPECT_EQ(kernel.calls({"ExAllocatePool2"}), Calls{});
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelMemory, of_callers_is_copied_through_a_resident_page) {
  OpenedKernel kernel;
  kernel.userMemory[0x20000] = Bytes(9000, 0x11);
  kernel.duringCopy = [&] { EXPECT_EQ(kinds(kernel)["resident VqsC"], 1); };
  EXPECT_EQ(kernel.load(0x20000, 9000), kSuccess);
  EXPECT_EQ(kernel.calls({"MmCopyMemory"}), (Calls{"MmCopyMemory 4096", "MmCopyMemory 4096", "MmCopyMemory 808"}));
  EXPECT_EQ(kinds(kernel)["resident VqsC"], 0);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelMemory, of_callers_may_end_too_early) {
  OpenedKernel kernel;
  kernel.userMemory[0x20000] = Bytes(5000, 0x11);
  EXPECT_EQ(kernel.load(0x20000, 5001), kRequestNotAccepted);
  EXPECT_EQ(kernel.load(0x20000, 9000), kRequestNotAccepted);
  EXPECT_EQ(kernel.load(0x30000, 1), kRequestNotAccepted);
  EXPECT_EQ(kernel.load(0x20000, 5000), kSuccess);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelMemory, of_the_system_is_not_the_callers) {
  OpenedKernel kernel;
  for (const std::uint64_t address :
       {0x7FFFFFFF0000ULL, 0x7FFFFFFEFFFFULL, 0x800000000000ULL, 0xFFFFF80000000000ULL, 0xFFFFFFFFFFFFFFFFULL}) {
    kernel.userMemory[address] = Bytes(2);
    EXPECT_EQ(kernel.load(address, 2), kRequestNotAccepted) << std::hex << address;
  }
  EXPECT_EQ(kernel.calls({"MmCopyMemory"}), Calls{});
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelMemory, of_callers_is_not_read_without_a_page_or_a_function) {
  OpenedKernel kernel;
  kernel.userMemory[0x20000] = Bytes(100);
  kernel.allocationsLeft = 0;
  EXPECT_EQ(kernel.load(0x20000, 100), kRequestNotAccepted);
  EXPECT_EQ(kernel.startLog(), kRequestNotAccepted);
  kernel.allocationsLeft = 100;
  kernel.symbols.erase(L"MmCopyMemory");
  EXPECT_EQ(kernel.load(0x20000, 100), kRequestNotAccepted);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelMemory, that_is_overrun_on_the_stack_ends_the_system) {
  // the cookie that was found is not known; the cookie; its complement
  EXPECT_EXIT(__stack_chk_fail(), testing::ExitedWithCode(0xF7), "bug check f7 0 cookie complement 0");
}

/// The cookie that the driver has after its start, when the system has left it like this.
std::uintptr_t cookieAfterStart(std::uintptr_t before) {
  __stack_chk_guard = before;
  const ScriptedKernel kernel;
  return __stack_chk_guard;
}

TEST(KernelMemory, has_a_stack_cookie_of_its_own_in_every_run) {
  constexpr std::uintptr_t kAsBuilt = 0x00002B992DDFA232;
  const auto first = cookieAfterStart(kAsBuilt);
  const auto second = cookieAfterStart(kAsBuilt);
  EXPECT_NE(first, kAsBuilt);
  EXPECT_NE(first, second);
  EXPECT_NE(first, 0U);
  EXPECT_EQ(first >> 48, 0U);
}

TEST(KernelMemory, keeps_the_stack_cookie_that_the_system_has_chosen) {
  EXPECT_EQ(cookieAfterStart(0x123456789ABC), 0x123456789ABCU);
}

}  // namespace
}  // namespace test
