// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <thread>

#include "tests/windows/scripted_kernel.h"

namespace test {
namespace {

constexpr std::uint32_t kInitializing = 0x80;
constexpr std::uint32_t kInrush = 0x4000;
constexpr std::uint32_t kPagable = 0x2000;
constexpr std::uint32_t kAppIo = 0x80222068;
constexpr std::uint32_t kPolicyBinary = 0x80222070;
constexpr std::uint32_t kLog = 0x80222058;

using File = ScriptedKernel::File;

/// A device that is started.
struct StartedKernel : ScriptedKernel {
  StartedKernel() {
    EXPECT_EQ(addDevice(), kSuccess);
    EXPECT_EQ(pnp(kStart), kSuccess);
    calls({});
  }
};

Status send(ScriptedKernel& kernel, File& file, std::uint32_t code, Bytes buffer) {
  const std::size_t size = buffer.size();
  return kernel.control(file, code, buffer, size);
}

Status announce(ScriptedKernel& kernel, File& file) { return send(kernel, file, kAppIo, Record{12}.u32(0, 3)); }

TEST(KernelDevice, has_the_power_flags_of_the_device_below) {
  for (const std::uint32_t flags : {0U, kPagable, kInrush, kPagable | kInrush}) {
    ScriptedKernel kernel;
    kernel.lowerFlags = flags;
    ASSERT_EQ(kernel.addDevice(), kSuccess);
    EXPECT_EQ(kernel.deviceFlags & (kPagable | kInrush), flags);
    EXPECT_EQ(kernel.deviceFlags & kInitializing, 0U);
    EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  }
}

TEST(KernelDevice, that_cannot_be_attached_leaves_nothing) {
  ScriptedKernel kernel;
  kernel.canAttach = false;
  EXPECT_EQ(kernel.addDevice(), kNoSuchDevice);
  EXPECT_TRUE(kernel.isDeleted);
}

TEST(KernelDevice, is_started_below_first_and_shown_last) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  File file{};
  EXPECT_EQ(kernel.create(file), kNoSuchDevice);
  kernel.calls({});
  EXPECT_EQ(kernel.pnp(kStart), kSuccess);
  EXPECT_EQ(kernel.calls({"Io"}), (Calls{"IoAcquireRemoveLockEx", "IofCallDriver 1b.00", "IoSetDeviceInterfaceState 1",
                                         "IofCompleteRequest", "IoReleaseRemoveLockEx"}));
  EXPECT_EQ(kernel.create(file), kSuccess);
  EXPECT_EQ(announce(kernel, file), kSuccess);
  EXPECT_EQ(kernel.close(file), kSuccess);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, waits_for_a_device_below_that_starts_later) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  kernel.isLowerSlow = true;
  EXPECT_EQ(kernel.pnp(kStart), kSuccess);
  kernel.isLowerSlow = false;
  File file{};
  EXPECT_EQ(kernel.create(file), kSuccess);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, does_not_start_when_the_one_below_does_not) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  kernel.lowerStatus = kInsufficientResources;
  kernel.calls({});
  EXPECT_EQ(kernel.pnp(kStart), kInsufficientResources);
  EXPECT_EQ(kernel.calls({"IoSet", "Ex"}), Calls{});
  File file{};
  EXPECT_EQ(kernel.create(file), kNoSuchDevice);
  kernel.lowerStatus = kSuccess;
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, that_cannot_be_shown_is_not_started) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  kernel.interfaceStatus = kInsufficientResources;
  EXPECT_EQ(kernel.pnp(kStart), kInsufficientResources);
  File file{};
  EXPECT_EQ(kernel.create(file), kNoSuchDevice);
  kernel.calls({});
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  EXPECT_EQ(kernel.calls({"IoSetDeviceInterfaceState"}), Calls{}) << "it was never enabled";
}

TEST(KernelDevice, without_memory_or_a_thread_is_not_started) {
  for (int allocations = 0; allocations < 2; ++allocations) {
    ScriptedKernel kernel;
    ASSERT_EQ(kernel.addDevice(), kSuccess);
    kernel.allocationsLeft = allocations;
    EXPECT_EQ(kernel.pnp(kStart), kInsufficientResources);
    EXPECT_TRUE(kernel.allocated.empty());
    EXPECT_EQ(kernel.calls({"IoSet"}), Calls{});
    EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  }
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  kernel.canStartThreads = false;
  EXPECT_EQ(kernel.pnp(kStart), kInsufficientResources);
  EXPECT_TRUE(kernel.allocated.empty());
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, is_in_use_during_every_request_of_the_system) {
  for (int minor = 0; minor <= 0x18; ++minor) {
    if (minor == kRemove || minor == kStart || minor == kQueryStop) continue;
    StartedKernel kernel;
    EXPECT_EQ(kernel.pnp(static_cast<Pnp>(minor)), kSuccess);
    const auto calls = kernel.calls({"IoAcquire", "IofCall", "IoRelease"});
    ASSERT_EQ(calls.size(), 3U) << minor;
    EXPECT_EQ(calls[0], "IoAcquireRemoveLockEx");
    EXPECT_EQ(calls[1].substr(0, 16), "IofCallDriver 1b");
    EXPECT_EQ(calls[2], "IoReleaseRemoveLockEx");
    EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  }
}

TEST(KernelDevice, tells_of_done_what_it_answers_for_and_nothing_else) {
  StartedKernel kernel;
  kernel.lowerStatus = kNotSupported;
  EXPECT_EQ(kernel.pnp(kQueryCapabilities), kNotSupported);
  EXPECT_EQ(kernel.pnp(kUsageNotification), kNotSupported);
  kernel.lowerStatus = kSuccess;
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, is_not_stopped_because_it_keeps_no_requests_for_later) {
  StartedKernel kernel;
  EXPECT_EQ(kernel.pnp(kQueryStop), kUnsuccessful);
  EXPECT_EQ(kernel.calls({"Io"}), (Calls{"IoAcquireRemoveLockEx", "IofCompleteRequest", "IoReleaseRemoveLockEx"}));
  EXPECT_EQ(kernel.pnp(kCancelStop), kSuccess);
  File file{};
  EXPECT_EQ(kernel.create(file), kSuccess);
  EXPECT_EQ(kernel.close(file), kSuccess);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, is_removed_in_the_order_of_the_rules) {
  StartedKernel kernel;
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  EXPECT_EQ(kernel.calls({"Io"}), (Calls{"IoAcquireRemoveLockEx", "IoSetDeviceInterfaceState 0", "IofCallDriver 1b.02",
                                         "IoReleaseRemoveLockAndWaitEx", "IoDetachDevice", "IoDeleteDevice"}));
}

TEST(KernelDevice, that_never_started_is_removed_without_being_hidden) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  kernel.calls({});
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  EXPECT_EQ(kernel.calls({"IoSet", "IoDe"}), (Calls{"IoDetachDevice", "IoDeleteDevice"}));
}

TEST(KernelDevice, that_vanishes_is_hidden_once_and_serves_nobody) {
  StartedKernel kernel;
  File file{};
  File late{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  ASSERT_EQ(send(kernel, file, kLog, Record{32}.u32(4, 7)), kSuccess);
  EXPECT_EQ(kernel.mappedViews, 2);
  kernel.calls({});
  EXPECT_EQ(kernel.pnp(kSurpriseRemoval), kSuccess);
  EXPECT_EQ(kernel.calls({"IoSet", "Iof"}), (Calls{"IoSetDeviceInterfaceState 0", "IofCallDriver 1b.17"}));
  EXPECT_EQ(kernel.mappedViews, 0) << "what clients held is taken back while their handles stay open";
  EXPECT_EQ(kernel.create(late), kNoSuchDevice);
  EXPECT_EQ(announce(kernel, file), kNoSuchDevice);
  EXPECT_EQ(kernel.power(), kSuccess);
  EXPECT_EQ(kernel.cleanup(file), kSuccess);
  EXPECT_EQ(kernel.close(file), kSuccess);
  kernel.calls({});
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  EXPECT_EQ(kernel.calls({"IoSet", "IoDe"}), (Calls{"IoDetachDevice", "IoDeleteDevice"}));
}

TEST(KernelDevice, that_vanishes_before_its_start_is_not_hidden) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  EXPECT_EQ(kernel.pnp(kSurpriseRemoval), kSuccess);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  EXPECT_EQ(kernel.calls({"IoSet"}), Calls{});
}

TEST(KernelDevice, that_may_be_removed_lets_nobody_in_until_that_is_called_off) {
  StartedKernel kernel;
  File file{};
  File late{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  EXPECT_EQ(kernel.pnp(kQueryRemove), kSuccess);
  EXPECT_EQ(kernel.create(late), kDeletePending);
  EXPECT_EQ(announce(kernel, file), kSuccess) << "what is open goes on";
  kernel.calls({});
  kernel.isLowerSlow = true;
  EXPECT_EQ(kernel.pnp(kCancelRemove), kSuccess);
  kernel.isLowerSlow = false;
  EXPECT_EQ(kernel.calls({"Io"}),
            (Calls{"IoAcquireRemoveLockEx", "IofCallDriver 1b.03", "IofCompleteRequest", "IoReleaseRemoveLockEx"}));
  EXPECT_EQ(kernel.create(late), kSuccess);
  EXPECT_EQ(kernel.pnp(kCancelRemove), kSuccess) << "there was nothing to call off";
  EXPECT_EQ(announce(kernel, late), kSuccess);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, does_not_start_by_a_removal_that_is_called_off) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  EXPECT_EQ(kernel.pnp(kQueryRemove), kSuccess);
  EXPECT_EQ(kernel.pnp(kCancelRemove), kSuccess);
  File file{};
  EXPECT_EQ(kernel.create(file), kNoSuchDevice);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, can_be_started_again_and_remembers) {
  StartedKernel kernel;
  File file{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  ASSERT_EQ(send(kernel, file, kAppIo, Record{12}.u32(0, 4).u32(4, 7).u32(8, 8)), kSuccess);
  EXPECT_EQ(kernel.pnp(kStop), kSuccess);
  kernel.calls({});
  EXPECT_EQ(kernel.pnp(kStart), kSuccess);
  EXPECT_EQ(kernel.calls({"IoSet"}), Calls{}) << "it was shown all the time";
  Bytes outputs = Record{12}.bytes();
  EXPECT_EQ(kernel.control(file, kAppIo, outputs, 12), kSuccess);
  EXPECT_EQ(outputs, Record{12}.u32(4, 7).u32(8, 8).bytes());
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, is_not_deleted_while_a_request_is_carried_out) {
  StartedKernel kernel;
  File file{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  kernel.userMemory[0x10000] = Bytes(100);
  std::thread remover;
  Calls meanwhile;
  kernel.duringCopy = [&] {
    remover = std::thread{[&] { EXPECT_EQ(kernel.pnp(kRemove), kSuccess); }};
    while (meanwhile.empty()) meanwhile = kernel.calls({"IoReleaseRemoveLockAndWaitEx", "IoDeleteDevice"});
    EXPECT_FALSE(kernel.isDeleted);
    EXPECT_FALSE(kernel.allocated.empty());
  };
  EXPECT_EQ(send(kernel, file, kPolicyBinary, Record{24}.u64(8, 100).u64(16, 0x10000)), kSuccess);
  remover.join();
  EXPECT_EQ(meanwhile, Calls{"IoReleaseRemoveLockAndWaitEx"});
  EXPECT_EQ(kernel.calls({"IoDeleteDevice"}), Calls{"IoDeleteDevice"});
}

TEST(KernelDevice, that_is_gone_refuses_whatever_comes_late) {
  StartedKernel kernel;
  File file{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  kernel.calls({});
  File late{};
  EXPECT_EQ(kernel.create(late), kDeletePending);
  EXPECT_EQ(announce(kernel, file), kDeletePending);
  EXPECT_EQ(kernel.power(), kDeletePending);
  EXPECT_EQ(kernel.pnp(kQueryCapabilities), kDeletePending);
  EXPECT_EQ(kernel.cleanup(file), kSuccess);
  EXPECT_EQ(kernel.close(file), kSuccess);
  EXPECT_EQ(kernel.calls({"IofCall", "IoRelease"}), Calls{});
}

TEST(KernelDevice, serves_no_request_that_belongs_to_no_file) {
  StartedKernel kernel;
  Bytes buffer = Record{12}.u32(0, 3);
  EXPECT_EQ(kernel.controlWithoutFile(kAppIo, buffer, 12), kInvalidHandle);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelDevice, hands_power_requests_down_and_waits_for_nothing) {
  ScriptedKernel kernel;
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  kernel.calls({});
  EXPECT_EQ(kernel.power(), kSuccess);
  EXPECT_EQ(kernel.calls({"Io"}), (Calls{"IoAcquireRemoveLockEx", "IofCallDriver 16.02", "IoReleaseRemoveLockEx"}));
  kernel.lowerStatus = kNotSupported;
  EXPECT_EQ(kernel.power(), kNotSupported);
  kernel.lowerStatus = kSuccess;
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

}  // namespace
}  // namespace test
