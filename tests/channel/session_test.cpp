// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "support/faults.h"
#include "support/scripted_driver.h"
#include "vqs/session.h"

namespace test {
namespace {

constexpr std::uint32_t kAnnouncement = 0x80222068;
constexpr std::uint32_t kLog = 0x80222058;

TEST(Initialize, announces_the_session_on_the_new_handle) {
  ScriptedDriver driver;
  driver.expectSplit(kAnnouncement).request("03 00 00 00  00 00 00 00  00 00 00 00").reply("00 00 00 00");
  QtfSession* session = nullptr;
  EXPECT_EQ(vqsInitialize(&session), 0U);
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(vqsUninitialize(session), 0U);
}

}  // namespace
}  // namespace test
