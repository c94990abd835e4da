// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using Handles = std::vector<std::uint64_t>;

Record registration(std::uint32_t index, std::uint64_t event, std::uint8_t registered = 1) {
  return Record{16}.u8(0, registered).u32(4, index).u64(8, event);
}

void registerEvent(ModelClient& client, std::uint32_t index, std::uint64_t event) {
  EXPECT_EQ(client.outcome(0x80222024, registration(index, event)), Outcome::kSuccess) << index;
}
Outcome unregisterEvent(ModelClient& client, std::uint32_t index, std::uint64_t event) {
  return client.outcome(0x80222024, registration(index, event, 0));
}

/// One event for each index, 1000 for index 0 and so on.
void registerAll(ModelClient& client) {
  for (std::uint32_t index = 0; index < 7; ++index) registerEvent(client, index, 1000 + index);
}

/// Which were signalled since this was asked last, in order of their numbers.
Handles signalled(ModelClient& client) {
  Handles all;
  std::swap(all, client.surroundings.signalled);
  std::ranges::sort(all);
  return all;
}

TEST(SimulatorEvent, is_kept_until_it_is_unregistered) {
  ModelClient client;
  registerEvent(client, 0, 0x123456789A);
  ASSERT_EQ(client.surroundings.kept.size(), 1U);
  EXPECT_EQ(client.surroundings.kept.begin()->second, 0x123456789A);
  EXPECT_EQ(unregisterEvent(client, 0, 0x123456789A), Outcome::kSuccess);
  EXPECT_TRUE(client.surroundings.kept.empty());
  EXPECT_EQ(unregisterEvent(client, 0, 0x123456789A), Outcome::kRefused);
}

TEST(SimulatorEvent, is_registered_once_by_a_session) {
  ModelClient client;
  registerEvent(client, 2, 50);
  EXPECT_EQ(client.outcome(kEventRegistration, registration(2, 50)), Outcome::kRefused);
  registerEvent(client, 3, 50);
  registerEvent(client, 2, 51);
  client.session = 2;
  registerEvent(client, 2, 50);
  EXPECT_EQ(client.outcome(kEventRegistration, registration(2, 50)), Outcome::kRefused);
  EXPECT_EQ(client.surroundings.kept.size(), 4U);
}

TEST(SimulatorEvent, is_unregistered_by_its_own_session_only) {
  ModelClient client;
  registerEvent(client, 2, 50);
  EXPECT_EQ(unregisterEvent(client, 3, 50), Outcome::kRefused);
  EXPECT_EQ(unregisterEvent(client, 2, 51), Outcome::kRefused);
  client.session = 2;
  EXPECT_EQ(unregisterEvent(client, 2, 50), Outcome::kRefused);
  EXPECT_EQ(client.surroundings.kept.size(), 1U);
  client.session = 1;
  EXPECT_EQ(unregisterEvent(client, 2, 50), Outcome::kSuccess);
  registerEvent(client, 2, 50);
}

TEST(SimulatorEvent, ends_with_its_session) {
  ModelClient client;
  registerAll(client);
  client.session = 2;
  registerEvent(client, 6, 77);
  client.session = 1;
  client.surroundings.caller = 999;
  client.close();
  EXPECT_EQ(client.surroundings.kept.size(), 1U);
  client.session = 2;
  overrideKey(client, 35, 1);
  EXPECT_EQ(signalled(client), Handles{77});
  client.close();
  EXPECT_TRUE(client.surroundings.kept.empty());
}

TEST(SimulatorEvent, there_are_64_registrations_at_once) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 64; ++i) {
    client.session = 1 + i % 8;
    registerEvent(client, i % 7, 100 + i);
  }
  client.session = 9;
  EXPECT_EQ(client.outcome(kEventRegistration, registration(0, 99)), Outcome::kRefused);
  EXPECT_EQ(client.surroundings.kept.size(), 64U);
  client.session = 2;
  ASSERT_EQ(unregisterEvent(client, 1, 101), Outcome::kSuccess);
  client.session = 9;
  registerEvent(client, 0, 99);
  EXPECT_EQ(client.outcome(kEventRegistration, registration(0, 98)), Outcome::kRefused);
}

TEST(SimulatorEvent, there_are_8_registrations_at_once_of_a_session) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 8; ++i) registerEvent(client, i % 7, 100 + i);
  EXPECT_EQ(client.outcome(kEventRegistration, registration(0, 99)), Outcome::kRefused);
  EXPECT_EQ(client.surroundings.kept.size(), 8U);
  client.session = 2;
  registerEvent(client, 0, 99);
  client.session = 1;
  ASSERT_EQ(unregisterEvent(client, 3, 103), Outcome::kSuccess);
  registerEvent(client, 0, 98);
  EXPECT_EQ(client.outcome(kEventRegistration, registration(0, 97)), Outcome::kRefused);
}

TEST(SimulatorEvent, of_no_object_is_refused) {
  ModelClient client;
  client.surroundings.canKeepEvents = false;
  EXPECT_EQ(client.outcome(kEventRegistration, registration(0, 99)), Outcome::kRefused);
  client.surroundings.canKeepEvents = true;
  EXPECT_EQ(unregisterEvent(client, 0, 99), Outcome::kRefused);
  registerEvent(client, 0, 99);
}

TEST(SimulatorEvent, malformed_registrations_leave_no_trace) {
  ModelClient client;
  for (const std::uint8_t registered : std::initializer_list<std::uint8_t>{0, 1}) {
    for (const std::uint32_t index : {7U, 8U, 0x100U, 0x80000000U, 0xFFFFFFFFU})
      EXPECT_EQ(client.outcome(kEventRegistration, registration(index, 99, registered)), Outcome::kMalformed) << index;
    EXPECT_EQ(client.outcome(kEventRegistration, registration(0, 0, registered)), Outcome::kMalformed);
    expectOnlyZero(client, kEventRegistration, registration(0, 99, registered), 0, 1, 4);
  }
  for (unsigned registered = 2; registered < 256; ++registered)
    EXPECT_EQ(client.outcome(kEventRegistration, registration(0, 99, static_cast<std::uint8_t>(registered))),
              Outcome::kMalformed);
  EXPECT_TRUE(client.surroundings.kept.empty());
}

TEST(SimulatorEvent, lengths_are_exact) {
  ModelClient client;
  expectOnlyLengths(client, kEventRegistration, registration(0, 99), 0);
  EXPECT_TRUE(client.surroundings.kept.empty());
}

TEST(SimulatorEvent, nothing_happens_while_nothing_changes) {
  ModelClient client;
  registerAll(client);
  settingsOf(client);
  client.answer(kAppIo, Bytes(12), 12);
  client.refresh();
  startLog(client, 7);
  ASSERT_EQ(client.add(kModifyAsm, simplePolicy(7)), 0);
  EXPECT_EQ(signalled(client), Handles{});
}

TEST(SimulatorEvent, of_index_0_tells_of_changed_outputs) {
  ModelClient client;
  registerAll(client);
  client.answer(kAppIo, Record{12}.u32(0, 4).u32(4, 1).u32(8, 2), 12);
  EXPECT_EQ(signalled(client), Handles{1000});
  client.answer(kAppIo, Record{12}.u32(0, 4).u32(4, 1).u32(8, 2), 12);
  EXPECT_EQ(signalled(client), Handles{});
  client.answer(kAppIo, Record{12}.u32(0, 2).u32(8, 3), 12);
  EXPECT_EQ(signalled(client), Handles{1000});
  overrideKey(client, 31, 9);
  EXPECT_EQ(signalled(client), (Handles{1000, 1006}));
}

TEST(SimulatorEvent, of_index_1_tells_of_another_power_source) {
  ModelClient client;
  registerAll(client);
  const std::uint32_t own = inForce(client, 24);
  overrideKey(client, 24, own);
  EXPECT_EQ(signalled(client), Handles{1006});
  overrideKey(client, 24, 1 - own);
  EXPECT_EQ(signalled(client), (Handles{1001, 1006}));
  liftOverride(client, 24);
  EXPECT_EQ(signalled(client), (Handles{1001, 1006}));
}

TEST(SimulatorEvent, of_index_1_tells_of_the_platforms_own_changes) {
  ModelClient client;
  client.refresh();
  registerEvent(client, 1, 1001);
  std::size_t changes = 0;
  for (int minute = 0; minute < 24 * 60; ++minute) {
    const std::uint32_t before = inForce(client, 24);
    client.surroundings.clock += 60000;
    client.refresh();
    const bool changed = inForce(client, 24) != before;
    EXPECT_EQ(signalled(client).size(), changed ? 1U : 0U);
    changes += changed ? 1 : 0;
  }
  EXPECT_GT(changes, 0U);
}

TEST(SimulatorEvent, start_of_the_platform_is_no_change) {
  for (std::uint32_t index = 0; index < 7; ++index) {
    ModelClient client;
    registerEvent(client, index, 1000);
    EXPECT_EQ(signalled(client), Handles{}) << index;
    client.surroundings.clock += 1000;
    client.refresh();
    EXPECT_EQ(signalled(client), Handles{}) << index;
  }
}

TEST(SimulatorEvent, of_index_2_tells_of_the_lid) {
  ModelClient client;
  registerAll(client);
  const std::uint32_t own = inForce(client, 2);
  overrideKey(client, 2, 1 - own);
  EXPECT_EQ(signalled(client), (Handles{1002, 1006}));
  overrideKey(client, 2, 1 - own);
  EXPECT_EQ(signalled(client), Handles{1006});
  liftOverride(client, 2);
  EXPECT_EQ(signalled(client), (Handles{1002, 1006}));
}

TEST(SimulatorEvent, of_index_3_tells_of_policy_binaries) {
  ModelClient client;
  registerAll(client);
  const Bytes file = sample("laptop-r5.bin");
  client.surroundings.memory[0x10000] = file;
  client.answer(kPolicyBinary, Record{24}.u64(8, file.size()).u64(16, 0x10000), 24);
  EXPECT_EQ(signalled(client), Handles{1003});
  client.answer(kPolicyBinary, Record{24}.u64(8, file.size() / 2).u64(16, 0x10000), 24);
  EXPECT_EQ(signalled(client), Handles{}) << "not a policy binary";
  client.answer(kPolicyBinary, Record{24}.u32(0, 4), 24);
  EXPECT_EQ(signalled(client), Handles{}) << "an empty store";
  client.answer(kPolicyBinary, Record{24}.u32(0, 2), 24);
  EXPECT_EQ(signalled(client), Handles{}) << "a question";
  client.answer(kPolicyBinary, Record{24}.u32(0, 1), 24);
  EXPECT_EQ(signalled(client), Handles{1003});
  client.answer(kPolicyBinary, Record{24}.u32(0, 3), 24);
  EXPECT_EQ(signalled(client), Handles{}) << "in force already";
  ASSERT_EQ(client.add(kModifyAsm, simplePolicy(7)), 0);
  client.answer(kPolicyBinary, Record{24}.u32(0, 4), 24);
  EXPECT_EQ(signalled(client), Handles{1003});
  client.answer(kPolicyBinary, Record{24}.u32(0, 3), 24);
  EXPECT_EQ(signalled(client), Handles{1003});
}

TEST(SimulatorEvent, of_index_4_tells_of_sensor_updates) {
  ModelClient client;
  registerAll(client);
  ASSERT_EQ(client.outcome(kSensorUpdate, Record{16}.u32(0, 3)), Outcome::kSuccess);
  EXPECT_EQ(signalled(client), Handles{1004});
  ASSERT_EQ(client.outcome(kSensorUpdate, Record{16}.u32(0, 4)), Outcome::kMalformed);
  EXPECT_EQ(signalled(client), Handles{});
}

TEST(SimulatorEvent, of_index_5_tells_of_firmware_events) {
  ModelClient client;
  registerAll(client);
  ASSERT_EQ(client.outcome(kFirmwareEvent, Bytes(40)), Outcome::kSuccess);
  EXPECT_EQ(signalled(client), Handles{1005});
  ASSERT_EQ(client.outcome(kFirmwareEventV2, Bytes(64)), Outcome::kSuccess);
  EXPECT_EQ(signalled(client), Handles{1005});
}

TEST(SimulatorEvent, of_index_6_tells_of_overrides) {
  ModelClient client;
  registerAll(client);
  overrideKey(client, 36, 4);
  EXPECT_EQ(signalled(client), Handles{1006});
  liftOverride(client, 36);
  EXPECT_EQ(signalled(client), Handles{1006});
  ASSERT_EQ(client.outcome(kOverride, overrideRequest(52, 5)), Outcome::kMalformed);
  EXPECT_EQ(signalled(client), Handles{});
}

TEST(SimulatorEvent, reaches_every_registration_of_its_index) {
  ModelClient client;
  registerEvent(client, 5, 1);
  registerEvent(client, 5, 2);
  registerEvent(client, 4, 3);
  client.session = 2;
  client.surroundings.caller = 101;
  registerEvent(client, 5, 4);
  ASSERT_EQ(client.outcome(kFirmwareEvent, Bytes(40)), Outcome::kSuccess);
  EXPECT_EQ(signalled(client), (Handles{1, 2, 4}));
  ASSERT_EQ(unregisterEvent(client, 5, 4), Outcome::kSuccess);
  ASSERT_EQ(client.outcome(kFirmwareEvent, Bytes(40)), Outcome::kSuccess);
  EXPECT_EQ(signalled(client), (Handles{1, 2}));
}

}  // namespace
}  // namespace test
