// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/simulator/model/request_page.h"

namespace test {
namespace {

TEST(SimulatorRequests, announcement_is_answered_with_itself) {
  ModelClient client;
  const auto reply = client.send(0x80222068, hex("03 00 00 00  00 00 00 00  00 00 00 00"), 12);
  EXPECT_EQ(reply.outcome, Outcome::kSuccess);
  EXPECT_EQ(reply.answer, hex("03 00 00 00  00 00 00 00  00 00 00 00"));
}

TEST(SimulatorRequests, announcement_carries_no_values) {
  ModelClient client;
  for (std::size_t offset = 4; offset < 12; ++offset)
    EXPECT_EQ(client.send(0x80222068, Record{12}.u32(0, 3).u8(offset, 1), 12).outcome, Outcome::kMalformed) << offset;
}

TEST(SimulatorRequests, all_other_codes_are_unknown) {
  const auto known = codesOf(requestPage());
  ModelClient client;
  std::size_t unknown = 0;
  for (std::uint32_t code = 0x80221F00; code < 0x80222200; ++code) {
    const bool isKnown = std::ranges::find(known, code) != known.end();
    const auto outcome = client.send(code, {}, 0).outcome;
    EXPECT_EQ(outcome, isKnown ? Outcome::kWrongLength : Outcome::kUnknownRequest) << std::hex << code;
    unknown += outcome == Outcome::kUnknownRequest ? 1 : 0;
  }
  EXPECT_EQ(unknown, 0x300 - known.size());
  for (const std::uint32_t code : {0U, 0x222034U, 0x80222036U, 0xFFFFFFFFU})
    EXPECT_EQ(client.send(code, Record{4000}, 4000).outcome, Outcome::kUnknownRequest) << std::hex << code;
}

TEST(SimulatorRequests, other_operations_on_a_store_are_unknown) {
  ModelClient client;
  for (const std::uint32_t code : kModifyCodes)
    for (const std::uint32_t operation : {0U, 2U, 8U, 9U, 0x100U, 0x80000001U, 0xFFFFFFFFU})
      EXPECT_EQ(client.same(code, modifyRequest(operation)).outcome, Outcome::kUnknownRequest) << operation;
}

struct Form {
  const char* name;
  std::uint32_t code;
  Bytes input;
  std::size_t outputLength;
};

std::vector<Form> forms() {
  std::vector<Form> all = {
      {"announcement", kAppIo, Record{12}.u32(0, 3), 12},
      {"lookup", kLookup, lookupRequest(0, 7), 3972},
      {"set version", kModifyAsm, modifyRequest(6).u32(3988, 1), 4000},
      {"get version", kModifyAsm, modifyRequest(7), 4000},
  };
  for (const std::uint32_t code : kReadCodes) {
    all.push_back({"count", code, countQuery(), 19872});
    all.push_back({"chunk", code, chunkQuery(0), 19872});
  }
  for (const std::uint32_t code : kModifyCodes) {
    all.push_back({"add", code, addRequest(simplePolicy(9)), 4000});
    all.push_back({"reset", code, modifyRequest(3), 4000});
    all.push_back({"status count", code, modifyRequest(4).u8(3984, 1), 4000});
    all.push_back({"status entries", code, Record{4000 + 140}.u32(0, 4).u32(3976, 1), 4000 + 140});
    all.push_back({"delete", code, deleteRequest(7), 4});
  }
  return all;
}

/// One policy, 7, in each store.
void fill(ModelClient& client) {
  for (const std::uint32_t code : kModifyCodes) ASSERT_EQ(client.add(code, simplePolicy(7)), 0);
}

void expectUntouched(ModelClient& client) {
  for (const std::uint32_t code : kReadCodes) EXPECT_EQ(client.ids(code), Ids{7});
  const auto version = client.same(kModifyAsm, modifyRequest(7)).answer;
  EXPECT_EQ(part(version, 3988, 8), hex("00 00 00 00  00 00 00 00"));
}

TEST(SimulatorLengths, every_form_succeeds_with_its_lengths) {
  for (const auto& form : forms()) {
    ModelClient client;
    fill(client);
    EXPECT_EQ(client.send(form.code, form.input, form.outputLength).outcome, Outcome::kSuccess) << form.name;
  }
}

TEST(SimulatorLengths, every_other_input_length_fails_and_changes_nothing) {
  ModelClient client;
  fill(client);
  for (const auto& form : forms())
    for (std::size_t length = 0; length < form.input.size() + 300; ++length) {
      if (length == form.input.size()) continue;
      Bytes input = form.input;
      input.resize(length);
      ASSERT_EQ(client.send(form.code, input, form.outputLength).outcome, Outcome::kWrongLength)
          << form.name << " " << length;
    }
  expectUntouched(client);
}

TEST(SimulatorLengths, every_other_output_length_fails_and_changes_nothing) {
  ModelClient client;
  fill(client);
  for (const auto& form : forms())
    for (std::size_t length = 0; length < form.outputLength + 300; ++length) {
      if (length == form.outputLength) continue;
      ASSERT_EQ(client.send(form.code, form.input, length).outcome, Outcome::kWrongLength)
          << form.name << " " << length;
    }
  expectUntouched(client);
}

TEST(SimulatorLengths, both_lengths_wrong_alike_fail_and_change_nothing) {
  ModelClient client;
  fill(client);
  for (const auto& form : forms()) {
    if (form.input.size() != form.outputLength) continue;
    for (std::size_t length = 0; length < form.outputLength + 300; ++length) {
      if (length == form.outputLength) continue;
      Bytes input = form.input;
      input.resize(length);
      ASSERT_EQ(client.same(form.code, input).outcome, Outcome::kWrongLength) << form.name << " " << length;
    }
  }
  expectUntouched(client);
}

TEST(SimulatorLengths, a_buffer_shorter_than_its_lengths_is_never_touched) {
  ModelClient client;
  std::byte small[3999]{};
  small[0] = std::byte{3};
  const auto input = client.driver().control(client.surroundings, 1, kModifyPb, small, 4000, 4000);
  EXPECT_EQ(input.outcome, Outcome::kWrongLength);
  const auto output = client.driver().control(client.surroundings, 1, kModifyPb, std::span{small}.first(3000), 0, 4000);
  EXPECT_EQ(output.outcome, Outcome::kWrongLength);
}

TEST(SimulatorRequests, buffers_need_no_alignment) {
  ModelClient client;
  ASSERT_EQ(client.add(kModifyPb, simplePolicy(0x01020304)), 0);
  const Bytes request = countQuery();
  std::vector<std::byte> memory(19872 + 1);
  std::memcpy(memory.data() + 1, request.data(), request.size());
  const auto answer =
      client.driver().control(client.surroundings, 1, kReadPb, std::span{memory}.subspan(1), 19872, 19872);
  EXPECT_EQ(answer.outcome, Outcome::kSuccess);
  EXPECT_EQ(memory[5], std::byte{1});
}

}  // namespace
}  // namespace test
