// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

TEST(SimulatorFirmware, events_of_both_versions_are_taken) {
  ModelClient client;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(client.outcome(0x80222028, Bytes(40)), Outcome::kSuccess);
    EXPECT_EQ(client.outcome(0x8022202C, Bytes(64)), Outcome::kSuccess);
  }
}

TEST(SimulatorFirmware, events_carry_nothing) {
  ModelClient client;
  expectOnlyZero(client, kFirmwareEvent, Bytes(40), 0, 0, 40);
  expectOnlyZero(client, kFirmwareEventV2, Bytes(64), 0, 0, 64);
}

TEST(SimulatorFirmware, lengths_are_exact) {
  ModelClient client;
  expectOnlyLengths(client, kFirmwareEvent, Bytes(40), 0);
  expectOnlyLengths(client, kFirmwareEventV2, Bytes(64), 0);
  EXPECT_EQ(client.outcome(kFirmwareEvent, Bytes(64)), Outcome::kWrongLength);
  EXPECT_EQ(client.outcome(kFirmwareEventV2, Bytes(40)), Outcome::kWrongLength);
}

}  // namespace
}  // namespace test
