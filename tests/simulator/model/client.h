// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

#include "simulator/model/driver.h"
#include "tests/simulator/model/scripted_surroundings.h"
#include "tests/support/bytes.h"

namespace test {

using simulator::Outcome;

inline constexpr std::uint32_t kReadPb = 0x80222064;
inline constexpr std::uint32_t kReadAsm = 0x80222050;
inline constexpr std::uint32_t kReadBalanceProfile = 0x802220A8;
inline constexpr std::uint32_t kModifyPb = 0x80222034;
inline constexpr std::uint32_t kModifyAsm = 0x80222054;
inline constexpr std::uint32_t kModifyBalanceProfile = 0x802220AC;
inline constexpr std::uint32_t kLookup = 0x80222040;
inline constexpr std::uint32_t kAppIo = 0x80222068;

inline constexpr std::uint32_t kReadCodes[] = {kReadPb, kReadAsm, kReadBalanceProfile};
inline constexpr std::uint32_t kModifyCodes[] = {kModifyPb, kModifyAsm, kModifyBalanceProfile};

struct Reply {
  Outcome outcome;
  Bytes answer;
};

inline std::uint32_t word(std::span<const std::uint8_t> bytes, std::size_t offset) {
  std::uint32_t value = 0;
  std::memcpy(&value, bytes.subspan(offset, 4).data(), 4);
  return value;
}

inline Bytes part(const Bytes& bytes, std::size_t offset, std::size_t size) {
  const auto bounded = std::span{bytes}.subspan(offset, size);
  return {bounded.begin(), bounded.end()};
}

/// A policy of no entries.
inline Record simplePolicy(std::uint32_t id) { return Record{3972}.text16(0, u"p").u32(164, id); }

inline Record modifyRequest(std::uint32_t operation) { return Record{4000}.u32(0, operation); }
inline Record addRequest(const Bytes& policy) { return modifyRequest(1).put(4, policy); }
inline Record deleteRequest(std::uint32_t id) { return modifyRequest(5).u32(168, id); }
inline Record lookupRequest(std::uint32_t store, std::uint32_t key) {
  return Record{3984}.u32(4, key).u32(3980, store);
}
inline Record countQuery() { return Record{19872}.u8(0, 1); }
inline Record chunkQuery(std::uint32_t chunk) { return Record{19872}.u32(8, chunk); }

/// The driver alone, behind a buffer that is exactly as long as it has to be.
class ModelClient {
 public:
  ScriptedSurroundings surroundings;
  simulator::SessionId session = 1;

  Reply send(std::uint32_t code, const Bytes& input, std::size_t outputLength) {
    const std::size_t size = std::max(input.size(), outputLength);
    const auto buffer = std::make_unique<std::byte[]>(size);
    if (!input.empty()) std::memcpy(buffer.get(), input.data(), input.size());
    const auto answer =
        driver_->control(surroundings, session, code, {buffer.get(), size}, static_cast<std::uint32_t>(input.size()),
                         static_cast<std::uint32_t>(outputLength));
    EXPECT_LE(answer.length, answer.outcome == Outcome::kSuccess ? outputLength : 0);
    const auto* first = reinterpret_cast<const std::uint8_t*>(buffer.get());
    return {answer.outcome, {first, first + answer.length}};
  }

  Reply same(std::uint32_t code, const Bytes& record) { return send(code, record, record.size()); }

  /// What became of a request; its answer does not matter.
  Outcome outcome(std::uint32_t code, const Bytes& input, std::size_t outputLength = 0) {
    return send(code, input, outputLength).outcome;
  }

  /// The answer to a request that has to succeed.
  Bytes answer(std::uint32_t code, const Bytes& input, std::size_t outputLength) {
    const auto reply = send(code, input, outputLength);
    EXPECT_EQ(reply.outcome, Outcome::kSuccess) << std::hex << code;
    EXPECT_EQ(reply.answer.size(), outputLength) << std::hex << code;
    return reply.outcome == Outcome::kSuccess ? reply.answer : Bytes(outputLength, kPoison);
  }

  /// Adds a policy and returns the driver's result; 1, as the library does, when the request failed.
  std::uint32_t add(std::uint32_t modifyCode, const Bytes& policy) {
    const auto reply = same(modifyCode, addRequest(policy));
    return reply.outcome == Outcome::kSuccess ? word(reply.answer, 3980) : 1;
  }

  std::uint32_t remove(std::uint32_t modifyCode, std::uint32_t id) {
    const auto reply = send(modifyCode, deleteRequest(id), 4);
    return reply.outcome == Outcome::kSuccess ? word(reply.answer, 0) : 1;
  }

  std::uint32_t count(std::uint32_t readCode) {
    const auto reply = same(readCode, countQuery());
    EXPECT_EQ(reply.outcome, Outcome::kSuccess);
    return reply.outcome == Outcome::kSuccess ? word(reply.answer, 4) : ~0U;
  }

  /// Every policy of a store, read in chunks.
  std::vector<Bytes> policies(std::uint32_t readCode) {
    std::vector<Bytes> all;
    const std::uint32_t total = count(readCode);
    for (std::uint32_t i = 0; i < total; ++i) {
      const auto reply = same(readCode, chunkQuery(i / 5));
      EXPECT_EQ(reply.outcome, Outcome::kSuccess);
      all.push_back(part(reply.answer, 12 + 3972 * std::size_t{i % 5}, 3972));
    }
    return all;
  }

  std::vector<std::uint32_t> ids(std::uint32_t readCode) {
    std::vector<std::uint32_t> all;
    for (const auto& policy : policies(readCode)) all.push_back(word(policy, 164));
    return all;
  }

  void close() { driver_->close(surroundings, session); }
  void refresh() { driver_->refresh(surroundings); }

  simulator::Driver& driver() { return *driver_; }

 private:
  std::unique_ptr<simulator::Driver> driver_ = std::make_unique<simulator::Driver>();
};

using Ids = std::vector<std::uint32_t>;

/// Every other length, of the input, of the answer and of both, is wrong.
inline void expectOnlyLengths(ModelClient& client, std::uint32_t code, const Bytes& input, std::size_t outputLength) {
  for (std::size_t length = 0; length <= input.size() + 9; ++length) {
    if (length == input.size()) continue;
    Bytes other = input;
    other.resize(length);
    ASSERT_EQ(client.outcome(code, other, outputLength), Outcome::kWrongLength) << std::hex << code << " in " << length;
    ASSERT_EQ(client.outcome(code, other, length), Outcome::kWrongLength) << std::hex << code << " both " << length;
  }
  for (std::size_t length = 0; length <= outputLength + 9; ++length) {
    if (length == outputLength) continue;
    ASSERT_EQ(client.outcome(code, input, length), Outcome::kWrongLength) << std::hex << code << " out " << length;
  }
}

/// No byte of a record from `begin` to `end` may be anything but zero.
inline void expectOnlyZero(ModelClient& client, std::uint32_t code, const Bytes& valid, std::size_t outputLength,
                           std::size_t begin, std::size_t end) {
  for (std::size_t offset = begin; offset < end; ++offset)
    for (const std::uint8_t value : std::initializer_list<std::uint8_t>{0x01, 0x80, 0xFF}) {
      Bytes record = valid;
      record[offset] = value;
      ASSERT_EQ(client.outcome(code, record, outputLength), Outcome::kMalformed)
          << std::hex << code << " byte " << std::dec << offset;
    }
}

}  // namespace test
