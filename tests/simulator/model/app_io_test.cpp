// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

Record appIo(std::uint32_t operation, std::uint32_t valueA = 0, std::uint32_t valueB = 0) {
  return Record{12}.u32(0, operation).u32(4, valueA).u32(8, valueB);
}

Bytes outputs(ModelClient& client) { return client.answer(kAppIo, appIo(0), 12); }

void set(ModelClient& client, const Record& request) {
  EXPECT_EQ(client.answer(kAppIo, request, 12), request.bytes()) << "answer is the record as it came";
}

TEST(SimulatorAppIo, outputs_are_zero_at_first) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x80222068, Bytes(12), 12), Bytes(12));
  EXPECT_FALSE(client.surroundings.outputEvent);
}

TEST(SimulatorAppIo, outputs_follow_the_inputs) {
  ModelClient client;
  set(client, appIo(4, 0x11223344, 0x55667788));
  EXPECT_EQ(outputs(client), hex("00 00 00 00  44 33 22 11  88 77 66 55"));
  set(client, appIo(1, 0xFFFFFFFF));
  EXPECT_EQ(outputs(client), appIo(0, 0xFFFFFFFF, 0x55667788).bytes());
  set(client, appIo(2, 0, 9));
  EXPECT_EQ(outputs(client), appIo(0, 0xFFFFFFFF, 9).bytes());
  set(client, appIo(4));
  EXPECT_EQ(outputs(client), appIo(0).bytes());
}

TEST(SimulatorAppIo, second_input_travels_as_value_b) {
  ModelClient client;
  set(client, appIo(2, 0, 0xA1B2C3D4));
  EXPECT_EQ(outputs(client), hex("00 00 00 00  00 00 00 00  d4 c3 b2 a1"));
}

TEST(SimulatorAppIo, one_input_carries_no_value_for_the_other) {
  ModelClient client;
  expectOnlyZero(client, kAppIo, appIo(1, 5), 12, 8, 12);
  expectOnlyZero(client, kAppIo, appIo(2, 0, 5), 12, 4, 8);
  EXPECT_EQ(outputs(client), appIo(0).bytes());
}

TEST(SimulatorAppIo, reading_and_announcing_carry_no_values) {
  ModelClient client;
  set(client, appIo(4, 1, 2));
  expectOnlyZero(client, kAppIo, appIo(0), 12, 4, 12);
  expectOnlyZero(client, kAppIo, appIo(3), 12, 4, 12);
  EXPECT_TRUE(client.surroundings.outputEvent);
  set(client, appIo(3));
  EXPECT_TRUE(client.surroundings.outputEvent);
  EXPECT_EQ(outputs(client), appIo(0, 1, 2).bytes());
}

TEST(SimulatorAppIo, other_operations_are_unknown) {
  ModelClient client;
  for (const std::uint32_t operation : {5U, 6U, 0x100U, 0x80000001U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kAppIo, appIo(operation), 12), Outcome::kUnknownRequest) << operation;
}

TEST(SimulatorAppIo, lengths_are_exact) {
  ModelClient client;
  for (std::uint32_t operation = 0; operation < 5; ++operation) expectOnlyLengths(client, kAppIo, appIo(operation), 12);
}

TEST(SimulatorAppIo, changed_output_sets_the_event_until_outputs_are_read) {
  ModelClient client;
  for (const Record& change : {appIo(1, 7), appIo(2, 0, 7), appIo(4, 8, 7), appIo(4, 8, 9)}) {
    set(client, change);
    EXPECT_TRUE(client.surroundings.outputEvent);
    client.outcome(kOemId, {}, 32);
    client.surroundings.clock += 5000;
    client.refresh();
    EXPECT_TRUE(client.surroundings.outputEvent);
    outputs(client);
    EXPECT_FALSE(client.surroundings.outputEvent);
  }
}

TEST(SimulatorAppIo, driver_knows_the_state_of_the_event) {
  ModelClient client;
  EXPECT_FALSE(client.driver().areOutputsUnread());
  set(client, appIo(1, 7));
  EXPECT_TRUE(client.driver().areOutputsUnread());
  client.outcome(kOemId, {}, 32);
  client.close();
  EXPECT_TRUE(client.driver().areOutputsUnread()) << "whoever comes next has not read them";
  outputs(client);
  EXPECT_FALSE(client.driver().areOutputsUnread());
  overrideKey(client, 31, 77);
  EXPECT_TRUE(client.driver().areOutputsUnread());
}

TEST(SimulatorAppIo, unchanged_output_sets_no_event) {
  ModelClient client;
  for (const Record& same : {appIo(1, 0), appIo(2), appIo(4)}) {
    set(client, same);
    EXPECT_FALSE(client.surroundings.outputEvent);
  }
  set(client, appIo(4, 3, 4));
  outputs(client);
  for (const Record& same : {appIo(1, 3), appIo(2, 0, 4), appIo(4, 3, 4)}) {
    set(client, same);
    EXPECT_FALSE(client.surroundings.outputEvent);
  }
}

TEST(SimulatorAppIo, overridden_input_counts) {
  ModelClient client;
  set(client, appIo(4, 3, 4));
  outputs(client);
  overrideKey(client, 31, 77);
  EXPECT_TRUE(client.surroundings.outputEvent);
  EXPECT_EQ(outputs(client), appIo(0, 77, 4).bytes());
  overrideKey(client, 32, 88);
  EXPECT_TRUE(client.surroundings.outputEvent);
  EXPECT_EQ(outputs(client), appIo(0, 77, 88).bytes());
}

TEST(SimulatorAppIo, input_under_an_override_waits_for_its_end) {
  ModelClient client;
  overrideKey(client, 31, 77);
  outputs(client);
  set(client, appIo(1, 5));
  EXPECT_FALSE(client.surroundings.outputEvent);
  EXPECT_EQ(outputs(client), appIo(0, 77, 0).bytes());
  liftOverride(client, 31);
  EXPECT_TRUE(client.surroundings.outputEvent);
  EXPECT_EQ(outputs(client), appIo(0, 5, 0).bytes());
}

TEST(SimulatorAppIo, override_with_the_value_in_force_sets_no_event) {
  ModelClient client;
  set(client, appIo(1, 5));
  outputs(client);
  overrideKey(client, 31, 5);
  EXPECT_FALSE(client.surroundings.outputEvent);
  liftOverride(client, 31);
  EXPECT_FALSE(client.surroundings.outputEvent);
}

TEST(SimulatorAppIo, telemetry_shows_inputs_and_outputs) {
  ModelClient client;
  const Telemetry telemetry{client};
  set(client, appIo(4, 3, 4));
  overrideKey(client, 32, 88);
  EXPECT_EQ(telemetry.number(31), 3);
  EXPECT_EQ(telemetry.number(32), 88);
  EXPECT_EQ(telemetry.number(33), 3);
  EXPECT_EQ(telemetry.number(34), 88);
}

TEST(SimulatorAppIo, inputs_outlive_their_session) {
  ModelClient client;
  set(client, appIo(4, 3, 4));
  client.close();
  client.session = 2;
  EXPECT_EQ(outputs(client), appIo(0, 3, 4).bytes());
}

}  // namespace
}  // namespace test
