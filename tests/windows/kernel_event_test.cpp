// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/windows/scripted_kernel.h"

namespace test {
namespace {

constexpr std::uint32_t kAppIo = 0x80222068;

using File = ScriptedKernel::File;

/// A device whose driver's thread has done what it does at first.
void start(ScriptedKernel& kernel) {
  ASSERT_EQ(kernel.addDevice(), kSuccess);
  ASSERT_EQ(kernel.pnp(kStart), kSuccess);
  kernel.passSecond();
}

void changeOutputs(ScriptedKernel& kernel, File& file, std::uint32_t value) {
  Bytes buffer = Record{12}.u32(0, 4).u32(4, value);
  ASSERT_EQ(kernel.control(file, kAppIo, buffer, 12), kSuccess);
}

void readOutputs(ScriptedKernel& kernel, File& file) {
  Bytes buffer = Record{12};
  ASSERT_EQ(kernel.control(file, kAppIo, buffer, 12), kSuccess);
}

TEST(KernelOutputEvent, is_the_systems_and_everybody_may_wait_for_it) {
  ScriptedKernel kernel;
  start(kernel);
  ASSERT_EQ(kernel.eventRequests.size(), 1U);
  const auto& request = kernel.eventRequests[0];
  EXPECT_EQ(request.name, L"\\BaseNamedObjects\\VexoQtfAppOutputEvent");
  EXPECT_EQ(request.attributes, 0x1280U) << "kernel handle, opened if it exists, no links";
  EXPECT_EQ(request.access, 0x1F0003U);
  EXPECT_TRUE(request.isNotification);
  EXPECT_FALSE(request.isSignalled);
  EXPECT_TRUE(request.isOnDriversThread) << "in another thread it would belong to that thread's user";
  EXPECT_EQ(request.owner, hex("01 01 00 00 00 00 00 05  12 00 00 00"));
  EXPECT_EQ(request.accessList, hex("00 00 14 00  03 00 1f 00  01 01 00 00 00 00 00 05  12 00 00 00"
                                    "00 00 14 00  01 00 12 00  01 01 00 00 00 00 00 01  00 00 00 00"));
  EXPECT_EQ(kernel.calls({"ZwSetSecurityObject"}), Calls{});
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelOutputEvent, follows_the_outputs) {
  ScriptedKernel kernel;
  start(kernel);
  File file{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  EXPECT_FALSE(kernel.isOutputEventSignalled);
  changeOutputs(kernel, file, 7);
  EXPECT_TRUE(kernel.isOutputEventSignalled);
  readOutputs(kernel, file);
  EXPECT_FALSE(kernel.isOutputEventSignalled);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelOutputEvent, is_not_needed_for_the_start_and_made_when_it_can_be) {
  for (const Status status : {kPathNotFound, kTypeMismatch, kAccessDenied, kReparsePoint, kInsufficientResources}) {
    ScriptedKernel kernel;
    kernel.eventStatus = status;
    start(kernel);
    kernel.passSecond();
    EXPECT_GE(kernel.eventRequests.size(), 2U) << "once a second";
    EXPECT_EQ(kernel.referencedObjects, 0);
    kernel.eventStatus = kSuccess;
    kernel.passSecond();
    const auto requests = kernel.eventRequests.size();
    EXPECT_EQ(kernel.referencedObjects, 1);
    kernel.passSecond();
    EXPECT_EQ(kernel.eventRequests.size(), requests) << "once is enough";
    EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  }
}

TEST(KernelOutputEvent, is_there_when_the_device_has_been_opened) {
  ScriptedKernel kernel;
  kernel.eventStatus = kPathNotFound;
  start(kernel);
  kernel.eventStatus = kSuccess;
  const auto requests = kernel.eventRequests.size();
  File file{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  ASSERT_EQ(kernel.eventRequests.size(), requests + 1) << "no second has passed";
  EXPECT_TRUE(kernel.eventRequests.back().isOnDriversThread);
  File other{};
  ASSERT_EQ(kernel.create(other), kSuccess);
  EXPECT_EQ(kernel.eventRequests.size(), requests + 1);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelOutputEvent, that_is_made_late_has_the_state_that_it_should_have) {
  for (const bool isRead : {false, true}) {
    ScriptedKernel kernel;
    kernel.eventStatus = kPathNotFound;
    start(kernel);
    File file{};
    ASSERT_EQ(kernel.create(file), kSuccess);
    changeOutputs(kernel, file, 7);
    if (isRead) readOutputs(kernel, file);
    kernel.eventStatus = kSuccess;
    kernel.passSecond();
    EXPECT_EQ(kernel.eventRequests.back().isSignalled, !isRead);
    EXPECT_EQ(kernel.isOutputEventSignalled, !isRead);
    EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  }
}

TEST(KernelOutputEvent, of_somebody_else_becomes_the_systems) {
  for (const bool isUnread : {false, true}) {
    ScriptedKernel kernel;
    kernel.eventStatus = kPathNotFound;
    start(kernel);
    File file{};
    ASSERT_EQ(kernel.create(file), kSuccess);
    if (isUnread) changeOutputs(kernel, file, 7);
    kernel.isOutputEventSignalled = !isUnread;
    kernel.eventStatus = kNameExists;
    kernel.passSecond();
    EXPECT_EQ(kernel.calls({"ZwSetSecurityObject"}), Calls{"ZwSetSecurityObject 5"}) << "owner and access list";
    EXPECT_EQ(kernel.isOutputEventSignalled, isUnread);
    changeOutputs(kernel, file, 9);
    EXPECT_TRUE(kernel.isOutputEventSignalled);
    readOutputs(kernel, file);
    EXPECT_FALSE(kernel.isOutputEventSignalled);
    EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
  }
}

TEST(KernelOutputEvent, of_somebody_else_is_left_alone_when_it_cannot_be_secured) {
  ScriptedKernel kernel;
  kernel.eventStatus = kNameExists;
  kernel.securityStatus = kAccessDenied;
  start(kernel);
  const int handles = kernel.handles;
  File file{};
  ASSERT_EQ(kernel.create(file), kSuccess);
  changeOutputs(kernel, file, 7);
  EXPECT_FALSE(kernel.isOutputEventSignalled);
  EXPECT_EQ(kernel.referencedObjects, 0);
  EXPECT_EQ(kernel.handles, handles);
  kernel.securityStatus = kSuccess;
  kernel.passSecond();
  EXPECT_TRUE(kernel.isOutputEventSignalled);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

TEST(KernelOutputEvent, is_given_back_when_the_device_vanishes) {
  ScriptedKernel kernel;
  start(kernel);
  EXPECT_EQ(kernel.referencedObjects, 1);
  EXPECT_EQ(kernel.pnp(kSurpriseRemoval), kSuccess);
  EXPECT_EQ(kernel.referencedObjects, 0);
  EXPECT_EQ(kernel.pnp(kRemove), kSuccess);
}

}  // namespace
}  // namespace test
