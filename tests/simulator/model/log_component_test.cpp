// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/settings_view.h"

namespace test {
namespace {

using Mapping = ScriptedSurroundings::Mapping;

bool isUntouched(ModelClient& client, LogKind kind) {
  return std::ranges::all_of(client.surroundings.area(kind), [](std::byte byte) { return byte == std::byte{}; });
}

TEST(SimulatorLog, start_answers_with_id_address_and_data_version) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 4; ++i) {
    const auto answer = client.answer(0x80222058, logRequest(kStartOperations[i]), 32);
    const auto& mapped = client.surroundings.mapped.back();
    EXPECT_EQ(mapped.kind, kLogKinds[i]);
    EXPECT_EQ(mapped.process, client.surroundings.caller);
    const Record expected = logRequest(kStartOperations[i], i + 1).u64(8, mapped.address).u32(24, i < 2 ? 0 : 1);
    EXPECT_EQ(difference(answer, expected.bytes()), "") << i;
  }
  EXPECT_EQ(client.surroundings.mapped.size(), 4U);
}

TEST(SimulatorLog, start_looks_at_its_operation_only) {
  ModelClient client;
  const auto answer = client.answer(kLog, Record{32, 0xEE}.u32(4, 10), 32);
  const auto address = client.surroundings.mapped.at(0).address;
  EXPECT_EQ(difference(answer, logRequest(10, 1).u64(8, address).u32(24, 1).bytes()), "");
}

TEST(SimulatorLog, each_start_is_a_mapping_and_an_id_of_its_own) {
  ModelClient client;
  for (std::uint32_t id = 1; id <= 5; ++id) EXPECT_EQ(startLog(client, 7), id);
  EXPECT_EQ(client.surroundings.mapped.size(), 5U);
  ASSERT_EQ(client.outcome(kLog, logRequest(8, 3), 32), Outcome::kSuccess);
  EXPECT_EQ(startLog(client, 7), 6);
}

TEST(SimulatorLog, stop_takes_back_the_mapping_and_answers_with_its_request) {
  for (std::uint32_t i = 0; i < 4; ++i) {
    ModelClient client;
    startLog(client, 0);
    const auto id = startLog(client, kStartOperations[i]);
    const Mapping last = client.surroundings.mapped.back();
    const Record request = Record{32, 0xEE}.u32(0, id).u32(4, kStopOperations[i]);
    EXPECT_EQ(difference(client.answer(kLog, request, 32), request.bytes()), "");
    EXPECT_EQ(client.surroundings.unmapped, std::vector<Mapping>{last});
    EXPECT_EQ(client.surroundings.mapped.size(), 1U);
  }
}

TEST(SimulatorLog, any_stop_will_do_for_any_kind) {
  for (const std::uint32_t start : kStartOperations)
    for (const std::uint32_t stop : kStopOperations) {
      ModelClient client;
      EXPECT_EQ(client.outcome(kLog, logRequest(stop, startLog(client, start)), 32), Outcome::kSuccess);
      EXPECT_TRUE(client.surroundings.mapped.empty());
    }
}

TEST(SimulatorLog, stop_of_no_log_is_refused) {
  ModelClient client;
  EXPECT_EQ(client.outcome(kLog, logRequest(1, 0), 32), Outcome::kRefused);
  EXPECT_EQ(client.outcome(kLog, logRequest(1, 1), 32), Outcome::kRefused);
  const auto id = startLog(client, 0);
  for (const std::uint32_t other : {0U, id + 1, id + 0x100, id + 0x10000, id | 0x80000000, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kLog, logRequest(1, other), 32), Outcome::kRefused) << other;
  EXPECT_TRUE(client.surroundings.unmapped.empty());
  ASSERT_EQ(client.outcome(kLog, logRequest(1, id), 32), Outcome::kSuccess);
  EXPECT_EQ(client.outcome(kLog, logRequest(1, id), 32), Outcome::kRefused);
}

TEST(SimulatorLog, belongs_to_its_process_not_to_its_session) {
  ModelClient client;
  const auto id = startLog(client, 7);
  client.surroundings.caller = 101;
  EXPECT_EQ(client.outcome(kLog, logRequest(8, id), 32), Outcome::kRefused);
  client.session = 2;
  EXPECT_EQ(client.outcome(kLog, logRequest(8, id), 32), Outcome::kRefused);
  EXPECT_EQ(client.surroundings.mapped.size(), 1U);
  client.surroundings.caller = 100;
  EXPECT_EQ(client.outcome(kLog, logRequest(8, id), 32), Outcome::kSuccess);
  EXPECT_TRUE(client.surroundings.mapped.empty());
}

TEST(SimulatorLog, ids_are_counted_over_all_processes) {
  ModelClient client;
  EXPECT_EQ(startLog(client, 0), 1);
  client.surroundings.caller = 101;
  client.session = 2;
  EXPECT_EQ(startLog(client, 0), 2);
}

TEST(SimulatorLog, there_are_64_at_once_in_all_processes) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 64; ++i) {
    client.surroundings.caller = 100 + i % 3;
    client.session = 1 + i % 8;
    EXPECT_EQ(startLog(client, kStartOperations[i % 4]), i + 1);
  }
  client.session = 9;
  for (const std::uint32_t operation : kStartOperations)
    EXPECT_EQ(client.outcome(kLog, logRequest(operation), 32), Outcome::kRefused);
  EXPECT_EQ(client.surroundings.mapped.size(), 64U);
  client.surroundings.caller = 100;
  ASSERT_EQ(client.outcome(kLog, logRequest(1, 1), 32), Outcome::kSuccess);
  EXPECT_EQ(startLog(client, 0), 65);
  EXPECT_EQ(client.outcome(kLog, logRequest(0), 32), Outcome::kRefused);
}

TEST(SimulatorLog, there_are_8_at_once_of_a_session) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 8; ++i) {
    client.surroundings.caller = 100 + i % 2;
    EXPECT_EQ(startLog(client, kStartOperations[i % 4]), i + 1);
  }
  for (const std::uint32_t operation : kStartOperations)
    EXPECT_EQ(client.outcome(kLog, logRequest(operation), 32), Outcome::kRefused);
  EXPECT_EQ(client.surroundings.mapped.size(), 8U);
  client.session = 2;
  EXPECT_EQ(startLog(client, 7), 9) << "another session has a share of its own, and refused starts took no id";
}

TEST(SimulatorLog, a_stop_gives_its_place_back_to_the_session_that_started_it) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 8; ++i) startLog(client, 7);
  client.session = 2;
  ASSERT_EQ(client.outcome(kLog, logRequest(8, 5), 32), Outcome::kSuccess);
  client.session = 1;
  EXPECT_EQ(startLog(client, 0), 9);
  EXPECT_EQ(client.outcome(kLog, logRequest(0), 32), Outcome::kRefused);
}

TEST(SimulatorLog, close_ends_the_logs_of_its_session_in_their_process) {
  ModelClient client;
  startLog(client, 0);
  client.session = 2;
  startLog(client, 7);
  client.session = 1;
  startLog(client, 10);
  const auto mapped = client.surroundings.mapped;
  client.surroundings.caller = 999;
  client.close();
  EXPECT_EQ(client.surroundings.unmapped, (std::vector<Mapping>{mapped[0], mapped[2]}));
  EXPECT_EQ(client.surroundings.mapped, std::vector<Mapping>{mapped[1]});
  EXPECT_TRUE(client.driver().hasMappedLogs());
  client.close();
  EXPECT_EQ(client.surroundings.unmapped.size(), 2U);
  client.session = 2;
  client.close();
  EXPECT_FALSE(client.driver().hasMappedLogs());
}

TEST(SimulatorLog, close_makes_room) {
  ModelClient client;
  for (std::uint32_t i = 0; i < 8; ++i) startLog(client, 7);
  client.close();
  EXPECT_TRUE(client.surroundings.mapped.empty());
  for (std::uint32_t i = 0; i < 8; ++i) EXPECT_EQ(startLog(client, 7), 9 + i);
}

TEST(SimulatorLog, a_start_that_cannot_map_is_refused_and_leaves_nothing) {
  ModelClient client;
  for (const std::uint32_t operation : kStartOperations) {
    client.surroundings.canMapLogs = false;
    EXPECT_EQ(client.outcome(kLog, logRequest(operation), 32), Outcome::kRefused);
    client.surroundings.canMapLogs = true;
    client.surroundings.hasLogMemory = false;
    EXPECT_EQ(client.outcome(kLog, logRequest(operation), 32), Outcome::kRefused);
    client.surroundings.hasLogMemory = true;
  }
  EXPECT_TRUE(client.surroundings.mapped.empty());
  EXPECT_FALSE(client.driver().hasMappedLogs());
  EXPECT_EQ(client.outcome(kLog, logRequest(1, 1), 32), Outcome::kRefused);
  EXPECT_EQ(startLog(client, 0), 1);
}

TEST(SimulatorLog, tells_its_versions) {
  ModelClient client;
  EXPECT_EQ(client.answer(kLog, logRequest(4), 32), logRequest(4).u32(24, 3).bytes());
  EXPECT_EQ(client.answer(kLog, logRequest(5), 32), logRequest(5).u32(24, 4).bytes());
  EXPECT_EQ(client.answer(kLog, logRequest(13), 32), logRequest(13).u32(24, 5).bytes());
  for (const std::uint32_t operation : {4U, 5U, 6U, 13U})
    EXPECT_EQ(client.outcome(kLog, Record{32, 0xEE}.u32(4, operation), 32), Outcome::kSuccess) << operation;
  EXPECT_TRUE(client.surroundings.mapped.empty());
}

TEST(SimulatorLog, other_operations_are_unknown) {
  ModelClient client;
  for (const std::uint32_t operation : {9U, 12U, 14U, 15U, 0x100U, 0x10007U, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(client.outcome(kLog, logRequest(operation), 32), Outcome::kUnknownRequest) << operation;
}

TEST(SimulatorLog, lengths_are_exact) {
  ModelClient client;
  startLog(client, 0);
  for (std::uint32_t operation = 0; operation <= 13; ++operation)
    if (operation != 9 && operation != 12) expectOnlyLengths(client, kLog, logRequest(operation, 1), 32);
  EXPECT_EQ(client.surroundings.mapped.size(), 1U);
}

TEST(SimulatorLog, mapped_logs_are_known) {
  ModelClient client;
  EXPECT_FALSE(client.driver().hasMappedLogs());
  for (std::uint32_t i = 0; i < 4; ++i) {
    const auto id = startLog(client, kStartOperations[i]);
    EXPECT_TRUE(client.driver().hasMappedLogs());
    ASSERT_EQ(client.outcome(kLog, logRequest(kStopOperations[i], id), 32), Outcome::kSuccess);
    EXPECT_FALSE(client.driver().hasMappedLogs());
  }
}

TEST(SimulatorLogUpdate, comes_with_every_request) {
  ModelClient client;
  const Telemetry telemetry{client};
  EXPECT_EQ(telemetry.number(39), 0);
  client.surroundings.clock += 10000;
  client.outcome(kOemId, {}, 32);
  EXPECT_EQ(telemetry.number(39), 10);
  client.surroundings.clock += 5000;
  client.count(kReadPb);
  EXPECT_EQ(telemetry.number(39), 15);
}

TEST(SimulatorLogUpdate, comes_with_operation_6_polling_and_refresh) {
  ModelClient client;
  const Telemetry telemetry{client};
  client.surroundings.clock += 1000;
  EXPECT_EQ(client.answer(kLog, logRequest(6), 32), logRequest(6).bytes());
  EXPECT_EQ(telemetry.number(39), 1);
  client.surroundings.clock += 1000;
  client.answer(kPolling, Bytes(24), 24);
  EXPECT_EQ(telemetry.number(39), 2);
  client.surroundings.clock += 1000;
  client.refresh();
  EXPECT_EQ(telemetry.number(39), 3);
}

TEST(SimulatorLogUpdate, comes_with_a_start) {
  ModelClient client;
  client.outcome(kOemId, {}, 32);
  client.surroundings.clock += 7000;
  const Telemetry telemetry{client};
  EXPECT_EQ(telemetry.number(39), 7);
}

TEST(SimulatorLogUpdate, shows_what_the_request_itself_has_set) {
  ModelClient client;
  const Telemetry telemetry{client};
  ASSERT_EQ(client.outcome(kTaControl, Record{8}.u32(0, 0x11223344).u32(4, 5)), Outcome::kSuccess);
  EXPECT_EQ(telemetry.number(75), 0x11223344);
}

TEST(SimulatorLogUpdate, touches_no_area_that_is_not_mapped) {
  for (std::uint32_t i = 0; i < 4; ++i) {
    ModelClient client;
    client.outcome(kOemId, {}, 32);
    client.refresh();
    for (const LogKind kind : kLogKinds) EXPECT_TRUE(isUntouched(client, kind));
    const auto id = startLog(client, kStartOperations[i]);
    client.surroundings.clock += 60000;
    client.refresh();
    for (const LogKind kind : kLogKinds) EXPECT_EQ(isUntouched(client, kind), kind != kLogKinds[i]);

    ASSERT_EQ(client.outcome(kLog, logRequest(1, id), 32), Outcome::kSuccess);
    auto& area = client.surroundings.area(kLogKinds[i]);
    std::ranges::fill(area, std::byte{0xCC});
    client.surroundings.clock += 60000;
    client.outcome(kOemId, {}, 32);
    client.outcome(kLog, logRequest(6), 32);
    client.refresh();
    EXPECT_TRUE(std::ranges::all_of(area, [](std::byte byte) { return byte == std::byte{0xCC}; })) << i;
  }
}

TEST(SimulatorLogUpdate, goes_on_while_another_log_of_the_kind_is_mapped) {
  ModelClient client;
  const Telemetry telemetry{client};
  const auto second = startLog(client, 7);
  ASSERT_EQ(client.outcome(kLog, logRequest(8, second), 32), Outcome::kSuccess);
  client.surroundings.clock += 4000;
  client.refresh();
  EXPECT_EQ(telemetry.number(39), 4);
}

TEST(SimulatorLogUpdate, plain_areas_follow_the_platform) {
  ModelClient client;
  startLog(client, 0);
  startLog(client, 2);
  const auto plain = bytesOfArea(client.surroundings.area(LogKind::kPlain));
  const auto ex = bytesOfArea(client.surroundings.area(LogKind::kEx));
  client.surroundings.clock += 60000;
  client.refresh();
  EXPECT_NE(bytesOfArea(client.surroundings.area(LogKind::kPlain)), plain);
  EXPECT_NE(bytesOfArea(client.surroundings.area(LogKind::kEx)), ex);
}

TEST(SimulatorLogUpdate, lost_memory_of_an_area_is_survived) {
  ModelClient client;
  startLog(client, 7);
  client.surroundings.hasLogMemory = false;
  client.surroundings.clock += 1000;
  EXPECT_EQ(client.outcome(kOemId, {}, 32), Outcome::kSuccess);
  client.refresh();
  EXPECT_EQ(client.outcome(kLog, logRequest(8, 1), 32), Outcome::kSuccess);
}

TEST(SimulatorLogUpdate, leaves_the_areas_alone_after_requests_that_failed) {
  ModelClient client;
  startLog(client, 7);
  auto& area = client.surroundings.area(LogKind::kKeyValue);
  std::ranges::fill(area, std::byte{0xA5});
  EXPECT_EQ(client.outcome(kOverride, overrideRequest(24, 2)), Outcome::kMalformed);
  EXPECT_EQ(client.outcome(kModifyPb, Bytes(4), 4), Outcome::kUnknownRequest);
  EXPECT_TRUE(std::ranges::all_of(area, [](std::byte byte) { return byte == std::byte{0xA5}; }));
  EXPECT_EQ(client.outcome(kOverride, overrideRequest(24, 1)), Outcome::kSuccess);
  EXPECT_EQ(area[0], std::byte{1});
}

TEST(SimulatorLogSupport, describes_both_generations) {
  ModelClient client;
  EXPECT_EQ(client.answer(0x8022205C, hex("00"), 16), hex("01 00 00 00  03 00 00 00  00 10 00 00  e4 00 00 00"));
  EXPECT_EQ(client.answer(0x8022205C, hex("01"), 16), hex("01 00 00 00  04 00 00 00  00 10 00 00  32 00 00 00"));
}

TEST(SimulatorLogSupport, answers_as_much_as_fits_and_there_is) {
  ModelClient client;
  const Bytes all = hex("01 00 00 00  03 00 00 00  00 10 00 00  e4 00 00 00");
  for (std::size_t length = 4; length < 40; ++length) {
    const auto reply = client.send(kLogSupport, hex("00"), length);
    ASSERT_EQ(reply.outcome, Outcome::kSuccess) << length;
    EXPECT_EQ(reply.answer, part(all, 0, std::min<std::size_t>(length, 16))) << length;
  }
  for (std::size_t length = 0; length < 4; ++length)
    EXPECT_EQ(client.outcome(kLogSupport, hex("00"), length), Outcome::kWrongLength) << length;
}

TEST(SimulatorLogSupport, is_asked_with_one_byte_0_or_1) {
  ModelClient client;
  for (unsigned generation = 2; generation < 256; ++generation)
    EXPECT_EQ(client.outcome(kLogSupport, {static_cast<std::uint8_t>(generation)}, 16), Outcome::kMalformed);
  for (const std::size_t length : {0U, 2U, 4U, 16U})
    EXPECT_EQ(client.outcome(kLogSupport, Bytes(length), 16), Outcome::kWrongLength) << length;
}

}  // namespace
}  // namespace test
