// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <vqs/policy_binary.h>
#include "tests/support/policy_file.h"
#include "tests/support/results.h"
#include "tests/support/samples.h"
#include "tests/support/session_test.h"
#include "tests/support/stub_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

constexpr std::uint32_t kPbRead = 0x80222064;
constexpr std::uint32_t kAsmRead = 0x80222050;
constexpr std::uint32_t kAsmModify = 0x80222054;
constexpr std::uint32_t kBalanceProfileRead = 0x802220A8;

/// Scripts the reading of a store: the count, then chunks of five. The same buffer travels each time, so each request
/// still holds what the replies before it left there.
void expectFetch(ScriptedDriver& driver, std::uint32_t readCode, const std::vector<Bytes>& packed) {
  const auto count = static_cast<std::uint32_t>(packed.size());
  Record wire{19872};
  driver.expectSame(readCode).request(Record{wire}.u8(0, 1)).replyWord(4, count);
  wire.u32(4, count);
  for (std::uint32_t chunk = 0; 5 * chunk < count; ++chunk) {
    const auto first = packed.begin() + 5 * static_cast<std::ptrdiff_t>(chunk);
    const auto last = packed.begin() + std::min<std::ptrdiff_t>(count, 5 * static_cast<std::ptrdiff_t>(chunk) + 5);
    const Bytes policies = joined({first, last});
    driver.expectSame(readCode).request(wire.u32(8, chunk)).replyAt(12, policies);
    wire.put(12, policies);
  }
}

std::vector<Bytes> packedAll(const std::vector<Policy>& policies) {
  std::vector<Bytes> packed;
  packed.reserve(policies.size());
  for (const auto& policy : policies) packed.push_back(packedPolicy(policy));
  return packed;
}

std::vector<Policy> numbered(std::uint32_t count) {
  std::vector<Policy> policies;
  for (std::uint32_t i = 0; i < count; ++i) {
    policies.push_back(richPolicy());
    policies.back().id = 1000 + i;
  }
  return policies;
}

class CreateFromDriver : public SessionTest {
 protected:
  TemporaryFolder folder_;
  std::string path_ = folder_.path("out.bin");
};

using PbFromDriver = CreateFromDriver;
using AsmFromDriver = CreateFromDriver;
using BalanceProfileFromDriver = CreateFromDriver;

TEST_F(PbFromDriver, writes_the_store_in_its_order) {
  const auto laptop = sampleContent("laptop-r5.json");
  expectFetch(driver, kPbRead, packedAll(laptop.policies));
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 3, 41), kDone);
  EXPECT_EQ(difference(readFile(path_), sample("laptop-r5.bin")), "");
  EXPECT_EQ(driver.requestsServed(), 5U);
}

TEST_F(PbFromDriver, asks_for_five_policies_at_a_time) {
  const std::pair<std::uint32_t, std::size_t> cases[] = {{1, 2}, {4, 2}, {5, 2}, {6, 3}, {10, 3}, {11, 4}, {12, 4}};
  for (const auto& [count, requests] : cases) {
    expectFetch(driver, kPbRead, packedAll(numbered(count)));
    const auto before = driver.requestsServed();
    EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kDone);
    EXPECT_EQ(driver.requestsServed() - before, requests);
    EXPECT_EQ(difference(readFile(path_), writtenFile(numbered(count), 1, 2)), "") << count;
  }
}

TEST_F(PbFromDriver, sends_the_same_buffer_again_with_whatever_the_driver_left_in_it) {
  Record reply{19872, 0xEE};
  reply.u32(4, 6);
  driver.expectSame(kPbRead).request(Record{19872}.u8(0, 1)).reply(reply);
  auto chunk = Record{reply};
  chunk.put(12, packedPolicy(smallPolicy())).u32(4, 1);
  for (std::size_t slot = 1; slot < 5; ++slot) chunk.put(12 + slot * 3972, packedPolicy(smallPolicy()));
  driver.expectSame(kPbRead).request(Record{reply}.u8(0, 0).u32(8, 0)).reply(chunk);
  driver.expectSame(kPbRead).request(Record{chunk}.u8(0, 0xEE).u32(8, 1)).reply(chunk);
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kDone);
  EXPECT_EQ(difference(readFile(path_), writtenFile(std::vector<Policy>(6, smallPolicy()), 1, 2)), "");
}

TEST_F(PbFromDriver, trusts_the_count_of_the_first_reply) {
  driver.expectSame(kPbRead).anyRequest(19872).replyWord(4, 2);
  driver.expectSame(kPbRead).anyRequest(19872).replyWord(4, 400).replyAt(
      12, joined(packedAll({smallPolicy(), richPolicy(), smallPolicy()})));
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kDone);
  EXPECT_EQ(difference(readFile(path_), writtenFile({smallPolicy(), richPolicy()}, 1, 2)), "");
}

TEST_F(PbFromDriver, writes_a_pair_of_zeros_as_given_and_asks_nothing) {
  expectFetch(driver, kPbRead, packedAll({smallPolicy()}));
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 0, 0), kDone);
  EXPECT_EQ(difference(readFile(path_), writtenFile({smallPolicy()}, 0, 0)), "");
}

TEST_F(PbFromDriver, fails_on_an_empty_store_and_creates_no_file) {
  driver.expectSame(kPbRead).request(Record{19872}.u8(0, 1)).replyWord(4, 0);
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kFailed);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(PbFromDriver, stops_at_the_first_request_that_fails) {
  folder_.write("out.bin", {1, 2, 3});
  driver.expectSame(kPbRead).anyRequest(19872).replyWord(4, 7).fails();
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kFailed);
  driver.expectSame(kPbRead).anyRequest(19872).replyWord(4, 7);
  driver.expectSame(kPbRead).anyRequest(19872).fails();
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kFailed);
  driver.expectSame(kPbRead).anyRequest(19872).replyWord(4, 7);
  driver.expectSame(kPbRead).anyRequest(19872).replyAt(12, joined(packedAll(numbered(5))));
  driver.expectSame(kPbRead).anyRequest(19872).replyAt(12, joined(packedAll(numbered(2)))).fails();
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kFailed);
  EXPECT_EQ(readFile(path_), (Bytes{1, 2, 3}));
}

TEST_F(PbFromDriver, bounds_what_a_hostile_policy_makes_it_read) {
  for (const auto& record :
       {Record{3972}.u32(184, 237), Record{3972}.u32(188, 0xFFFFFFFF), Record{3972}.u32(192, 7), Record{3972, 0xFF}}) {
    driver.expectSame(kPbRead).anyRequest(19872).replyWord(4, 1);
    driver.expectSame(kPbRead).anyRequest(19872).replyAt(12, record);
    EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kFailed);
    EXPECT_FALSE(fileExists(path_));
  }
}

TEST_F(AsmFromDriver, asks_for_the_versions_after_the_chunks_when_both_are_zero) {
  const auto laptop = sampleContent("laptop-r5.json");
  expectFetch(driver, kAsmRead, packedAll(laptop.policies));
  driver.expectSame(kAsmModify)
      .request(Record{4000}.u32(0, 7))
      .replyAt(3988, Assembly{}.u32(0xABCD0003).u32(0x12340029));
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, path_.c_str(), 0, 0, 0), kDone);
  EXPECT_EQ(difference(readFile(path_), sample("laptop-r5.bin")), "");
}

TEST_F(AsmFromDriver, uses_both_versions_as_given_when_either_is_not_zero) {
  for (const auto& [first, second] : {std::pair<std::uint16_t, std::uint16_t>{0, 7}, {7, 0}, {3, 41}}) {
    expectFetch(driver, kAsmRead, packedAll({smallPolicy()}));
    EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, path_.c_str(), first, second, 0), kDone);
    EXPECT_EQ(difference(readFile(path_), writtenFile({smallPolicy()}, first, second)), "");
  }
}

TEST_F(AsmFromDriver, fails_when_the_version_query_fails) {
  expectFetch(driver, kAsmRead, packedAll({smallPolicy()}));
  driver.expectSame(kAsmModify).request(Record{4000}.u32(0, 7)).replyAt(3988, Bytes(8, 1)).fails();
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, path_.c_str(), 0, 0, 1), kFailed);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(AsmFromDriver, asks_for_the_versions_before_it_fails_on_an_empty_store) {
  driver.expectSame(kAsmRead).request(Record{19872}.u8(0, 1)).replyWord(4, 0);
  driver.expectSame(kAsmModify).request(Record{4000}.u32(0, 7)).replyAt(3988, Bytes(8, 1));
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, path_.c_str(), 0, 0, 0), kFailed);
  driver.expectSame(kAsmRead).request(Record{19872}.u8(0, 1)).replyWord(4, 0);
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, path_.c_str(), 1, 0, 0), kFailed);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(AsmFromDriver, writes_registry_text_to_the_very_path_it_was_given) {
  for (const std::uint8_t flag : {std::uint8_t{1}, std::uint8_t{0x80}, std::uint8_t{0xFF}}) {
    folder_.write("out.bin", Bytes(50000, 9));
    expectFetch(driver, kAsmRead, packedAll(sampleContent("laptop-r5.json").policies));
    EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, path_.c_str(), 3, 41, flag), kDone);
    EXPECT_EQ(difference(readFile(path_), sample("laptop-asm.reg")), "");
    EXPECT_FALSE(fileExists(path_ + ".reg"));
  }
}

TEST_F(BalanceProfileFromDriver, writes_the_store_as_binary_or_as_registry_text) {
  const auto packed = packedAll(sampleContent("laptop-r5.json").policies);
  expectFetch(driver, kBalanceProfileRead, packed);
  EXPECT_EQ(vqsBalanceProfileCreateBinaryFromDriver(session, path_.c_str(), 3, 41, 0), kDone);
  EXPECT_EQ(difference(readFile(path_), sample("laptop-r5.bin")), "");
  expectFetch(driver, kBalanceProfileRead, packed);
  EXPECT_EQ(vqsBalanceProfileCreateBinaryFromDriver(session, path_.c_str(), 3, 41, 1), kDone);
  EXPECT_EQ(difference(readFile(path_), sample("laptop-balanceprofile.reg")), "");
}

TEST_F(BalanceProfileFromDriver, writes_a_pair_of_zeros_as_given_and_asks_nothing) {
  expectFetch(driver, kBalanceProfileRead, packedAll({smallPolicy()}));
  EXPECT_EQ(vqsBalanceProfileCreateBinaryFromDriver(session, path_.c_str(), 0, 0, 0), kDone);
  EXPECT_EQ(difference(readFile(path_), writtenFile({smallPolicy()}, 0, 0)), "");
}

TEST_F(BalanceProfileFromDriver, fails_on_an_empty_store) {
  driver.expectSame(kBalanceProfileRead).request(Record{19872}.u8(0, 1)).replyWord(4, 0);
  EXPECT_EQ(vqsBalanceProfileCreateBinaryFromDriver(session, path_.c_str(), 0, 0, 1), kFailed);
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(CreateFromDriver, a_missing_path_is_refused_before_any_request_even_without_a_session) {
  for (QtfSession* any : {static_cast<QtfSession*>(session), static_cast<QtfSession*>(nullptr)}) {
    EXPECT_EQ(vqsPbCreateBinaryFromDriver(any, nullptr, 1, 2), kInvalid);
    EXPECT_EQ(vqsAsmCreateBinaryFromDriver(any, nullptr, 0, 0, 1), kInvalid);
    EXPECT_EQ(vqsBalanceProfileCreateBinaryFromDriver(any, nullptr, 1, 2, 0), kInvalid);
  }
}

TEST_F(CreateFromDriver, a_missing_handle_makes_the_first_request_fail) {
  const WindowsCalls calls;
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(&closed, path_.c_str(), 1, 2), kFailed);
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(&closed, path_.c_str(), 0, 0, 0), kFailed);
  EXPECT_EQ(vqsBalanceProfileCreateBinaryFromDriver(&closed, path_.c_str(), 1, 2, 1), kFailed);
  EXPECT_EQ(calls.all(), (std::vector<std::string>{"DeviceIoControl(0x80222064, 19872, 19872)",
                                                   "DeviceIoControl(0x80222050, 19872, 19872)",
                                                   "DeviceIoControl(0x802220a8, 19872, 19872)"}));
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(CreateFromDriver, a_missing_session_sends_nothing) {
  const WindowsCalls calls;
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(nullptr, path_.c_str(), 1, 2), kFailed);
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(nullptr, path_.c_str(), 0, 0, 0), kFailed);
  EXPECT_EQ(vqsBalanceProfileCreateBinaryFromDriver(nullptr, path_.c_str(), 1, 2, 1), kFailed);
  EXPECT_EQ(calls.all(), std::vector<std::string>{});
  EXPECT_FALSE(fileExists(path_));
}

TEST_F(CreateFromDriver, a_file_that_cannot_be_opened_fails_after_all_requests) {
  const auto nowhere = folder_.path("no/such/folder/out.bin");
  expectFetch(driver, kAsmRead, packedAll({smallPolicy()}));
  driver.expectSame(kAsmModify).request(Record{4000}.u32(0, 7));
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, nowhere.c_str(), 0, 0, 1), kFailed);
}

TEST_F(CreateFromDriver, a_registry_export_of_79_bytes_has_79_groups_and_78_commas) {
  expectFetch(driver, kAsmRead, packedAll({smallPolicy()}));
  EXPECT_EQ(vqsAsmCreateBinaryFromDriver(session, path_.c_str(), 1, 2, 1), kDone);
  const Bytes text = readFile(path_);
  EXPECT_EQ(std::ranges::count(text, ','), 78);
  EXPECT_EQ(std::ranges::count(text, '\n'), 4);
  const auto value = std::ranges::search(text, std::string_view{"=hex:"}).end();
  EXPECT_EQ(text.end() - value, 79 * 2 + 78 + 1);
  EXPECT_EQ(text.back(), '\n');
}

TEST_F(PbFromDriver, leaves_the_file_alone_when_a_policy_has_a_count_above_its_limit) {
  const std::pair<std::size_t, std::uint32_t> cases[] = {{184, 16}, {188, 33}, {192, 6}};
  for (const auto& [offset, count] : cases) {
    folder_.write("out.bin", {1, 2, 3});
    Record packed{3972};
    packed.put(0, packedPolicy(richPolicy())).u32(offset, count);
    expectFetch(driver, kPbRead, {packedPolicy(richPolicy()), packed});
    EXPECT_EQ(vqsPbCreateBinaryFromDriver(session, path_.c_str(), 1, 2), kFailed);
    EXPECT_EQ(readFile(path_), (Bytes{1, 2, 3})) << offset;
  }
}

TEST(CreateFromHostileStore, a_count_far_beyond_memory_or_the_policies_ends_in_a_failure) {
  const TemporaryFolder folder;
  const auto path = folder.path("out.bin");
  for (const std::uint32_t count : {0xFFFFFFFFU, 0x80000000U, 100000U}) {
    StubStore store{{packedPolicy(smallPolicy())}};
    store.claim(count);
    store.failAt(2);
    EXPECT_EQ(vqsPbCreateBinaryFromDriver(store.session(), path.c_str(), 1, 2), kFailed) << count;
    EXPECT_LE(store.codes().size(), 2U) << count;
    EXPECT_FALSE(fileExists(path));
  }
}

TEST(CreateFromLargeStore, more_policies_than_a_reader_takes_are_written) {
  const TemporaryFolder folder;
  const auto path = folder.path("out.bin");
  StubStore store{packedAll(numbered(401))};
  EXPECT_EQ(vqsPbCreateBinaryFromDriver(store.session(), path.c_str(), 1, 2), kDone);
  EXPECT_EQ(store.codes().size(), 1U + 81);
  EXPECT_EQ(difference(readFile(path), writtenFile(numbered(401), 1, 2)), "");
}

}  // namespace
}  // namespace test
