// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/policy/catalogues.h"

#include "tests/support/results.h"
#include "tests/support/windows_calls.h"

namespace test {
namespace {

TEST_P(EveryCatalogue, is_marked_with_the_first_two_bytes_of_each_triple) {
  auto expected = startFromMarkers();
  expectQuery(9);
  expectRead(9).replyAt(16, hex("01 02 EE  00 FF EE  FE 00 EE"));
  EXPECT_EQ(get(), kDone);
  expected[0] = {0x11223301, 0x02};
  expected[1] = {0x11223300, 0xFF};
  expected[2] = {0x112233FE, 0x00};
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, is_marked_to_its_last_entry) {
  startFromMarkers();
  const std::size_t size = 3 * catalogue().entries;
  Record triples(size);
  AllFlags expected;
  for (std::size_t i = 0; i < catalogue().entries; ++i) {
    const auto odd = static_cast<std::uint8_t>(i % 2);
    const auto number = static_cast<std::uint8_t>(i);
    triples.u8(3 * i, odd).u8(3 * i + 1, number).u8(3 * i + 2, 0xEE);
    expected.push_back({0x11223300U + odd, number});
  }
  expectQuery(size);
  expectRead(size).replyAt(16, triples);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, takes_two_of_7_bytes) {
  auto expected = startFromMarkers();
  expectQuery(7);
  expectRead(7).replyAt(16, hex("01 02 EE  03 04 EE  05"));
  EXPECT_EQ(get(), kDone);
  expected[0] = {0x11223301, 0x02};
  expected[1] = {0x11223303, 0x04};
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, is_read_even_when_there_is_less_than_a_triple) {
  const auto expected = startFromMarkers();
  for (const std::size_t size : {0U, 1U, 2U}) {
    expectQuery(size);
    expectRead(size).replyAt(16, Bytes(size, 0xFF));
    EXPECT_EQ(get(), kDone);
  }
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, can_be_turned_off_entry_by_entry) {
  auto expected = catalogue().flags();
  expectQuery(18);
  Record triples(18);
  for (std::size_t i = 0; i < 5; ++i) {
    triples.u8(3 * i, static_cast<std::uint8_t>(expected[i].enabled));
    triples.u8(3 * i + 1, static_cast<std::uint8_t>(expected[i].driverFlag));
  }
  expectRead(18).replyAt(16, triples);
  EXPECT_EQ(get(), kDone);
  expected[5] = {0, 0};
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, keeps_its_flags_until_a_later_call_writes_them_again) {
  auto expected = startFromMarkers();
  expectQuery(6);
  expectRead(6).replyAt(16, hex("01 02 EE  03 04 EE"));
  EXPECT_EQ(get(), kDone);
  expectQuery(3);
  expectRead(3).replyAt(16, hex("05 06 EE"));
  EXPECT_EQ(get(), kDone);
  expected[0] = {0x11223305, 0x06};
  expected[1] = {0x11223303, 0x04};
  EXPECT_EQ(catalogue().flags(), expected);
  expectQuery(3).fails();
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, drops_triples_beyond_its_entries) {
  startFromMarkers();
  expectQuery(60000);
  expectRead(60000).replyAt(16, Bytes(60000, 0x7E));
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(catalogue().flags(), AllFlags(catalogue().entries, Flags{0x1122337E, 0x7E}));
}

TEST_P(EveryCatalogue, follows_a_size_that_the_reply_makes_smaller) {
  auto expected = startFromMarkers();
  expectQuery(9);
  expectRead(9).replyAt(8, sizeField(5)).replyAt(16, hex("01 02 EE  03 04 EE  05 06 EE"));
  EXPECT_EQ(get(), kDone);
  expected[0] = {0x11223301, 0x02};
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, reads_no_further_than_it_asked_when_the_reply_makes_the_size_larger) {
  for (const std::uint64_t size : {std::uint64_t{9}, std::uint64_t{504}, ~std::uint64_t{0}}) {
    auto expected = startFromMarkers();
    expectQuery(6);
    expectRead(6).replyAt(8, sizeField(size)).replyAt(16, hex("01 02 EE  03 04 EE"));
    EXPECT_EQ(get(), kDone);
    expected[0] = {0x11223301, 0x02};
    expected[1] = {0x11223303, 0x04};
    EXPECT_EQ(catalogue().flags(), expected) << size;
  }
}

TEST_P(EveryCatalogue, asks_no_more_when_the_size_does_not_fit_a_request) {
  const auto expected = startFromMarkers();
  for (const std::uint64_t size : {0xFFFFFFF0ULL, 0xFFFFFFFFULL, 0x100000003ULL, ~0ULL - 16, ~0ULL - 15, ~0ULL}) {
    expectQuery(size);
    EXPECT_EQ(get(), kDone);
  }
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, tries_the_longest_answer_that_fits_a_request) {
  faults.fail(Fault::kAllocation, 1);
  expectQuery(0xFFFFFFEF);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
}

TEST_P(EveryCatalogue, stays_as_it_is_when_the_driver_rejects_the_query) {
  const auto expected = startFromMarkers();
  expectQuery(9).fails();
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, stays_as_it_is_when_the_driver_rejects_the_read) {
  const auto expected = startFromMarkers();
  expectQuery(9);
  expectRead(9).replyAt(16, Bytes(9, 0)).fails();
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, stays_as_it_is_when_memory_runs_out) {
  const auto expected = startFromMarkers();
  faults.fail(Fault::kAllocation, 1);
  expectQuery(9);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
  EXPECT_EQ(catalogue().flags(), expected);
}

TEST_P(EveryCatalogue, takes_one_allocation_on_the_process_heap_and_two_requests) {
  startFromMarkers();
  const WindowsCalls calls;
  expectQuery(9);
  expectRead(9);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
  EXPECT_EQ(faults.peakBytes(), 25U);
  EXPECT_EQ(calls.of("HeapAlloc").size(), 1U);
  EXPECT_EQ(calls.of("HeapFree").size(), 1U);
  EXPECT_EQ(calls.of("DeviceIoControl").size(), 2U);
}

TEST_P(EveryCatalogue, is_asked_about_allocated_for_read_and_freed_in_this_order) {
  startFromMarkers();
  for (const bool succeeds : {true, false}) {
    const WindowsCalls calls;
    expectQuery(9);
    auto& read = expectRead(9);
    if (!succeeds) read.fails();
    EXPECT_EQ(get(), kDone);
    ASSERT_EQ(calls.all().size(), 4U);
    EXPECT_EQ(calls.all()[0], "DeviceIoControl(0x80222044, 16, 16)");
    EXPECT_TRUE(calls.all()[1].starts_with("HeapAlloc("));
    EXPECT_EQ(calls.all()[2], "DeviceIoControl(0x80222044, 25, 25)");
    EXPECT_TRUE(calls.all()[3].starts_with("HeapFree("));
  }
}

TEST_P(EveryCatalogue, ends_after_one_request_without_memory_of_the_process_heap) {
  WindowsCalls calls;
  calls.refuse("HeapAlloc");
  expectQuery(9);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(calls.of("DeviceIoControl").size(), 1U);
  EXPECT_TRUE(calls.of("HeapFree").empty());
}

TEST_P(EveryCatalogue, follows_the_size_and_not_the_byte_count) {
  for (const DWORD count : {0U, 16U, 0xFFFFFFFFU}) {
    auto expected = startFromMarkers();
    driver.report(count);
    expectQuery(6);
    expectRead(6).replyAt(16, hex("01 02 EE  03 04 EE"));
    EXPECT_EQ(get(), kDone);
    expected[0] = {0x11223301, 0x02};
    expected[1] = {0x11223303, 0x04};
    EXPECT_EQ(catalogue().flags(), expected) << count;
  }
}

TEST_P(EveryCatalogue, is_asked_about_on_the_sessions_handle) {
  expectQuery(3);
  expectRead(3);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(driver.takeRequestsOn(), std::vector<HANDLE>(2, session->handle));
}

TEST_P(EveryCatalogue, leaves_the_session_as_it_is) {
  session->logReference = 0x1111;
  session->logSessionId = 3;
  expectQuery(3);
  expectRead(3);
  EXPECT_EQ(get(), kDone);
  EXPECT_EQ(session->logReference, 0x1111U);
  EXPECT_EQ(session->logSessionId, 3U);
}

INSTANTIATE_TEST_SUITE_P(Of, EveryCatalogue, ::testing::Values(kConditions, kActions),
                         [](const auto& instance) { return instance.param.title; });

class OneCatalogue : public CatalogueTest {
 protected:
  void expectNothingWritten() {
    EXPECT_EQ(count, kPoisonWord);
    EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
    EXPECT_EQ(kConditions.flags(), conditionFlags);
    EXPECT_EQ(kActions.flags(), actionFlags);
  }

  std::uint32_t count = kPoisonWord;
};

TEST_F(OneCatalogue, of_conditions_needs_an_open_session_and_both_outputs) {
  const QtfConditionInfo* table = nullptr;
  EXPECT_EQ(vqsPbGetConditions(nullptr, &table, &count), kInvalid);
  EXPECT_EQ(vqsPbGetConditions(&closed, &table, &count), kInvalid);
  EXPECT_EQ(vqsPbGetConditions(session, nullptr, &count), kInvalid);
  EXPECT_EQ(vqsPbGetConditions(session, &table, nullptr), kInvalid);
  EXPECT_EQ(table, nullptr);
  expectNothingWritten();
}

TEST_F(OneCatalogue, of_actions_needs_both_outputs) {
  const QtfActionInfo* table = nullptr;
  EXPECT_EQ(vqsPbGetActions(session, nullptr, &count), kInvalid);
  EXPECT_EQ(vqsPbGetActions(session, &table, nullptr), kInvalid);
  EXPECT_EQ(vqsPbGetActions(nullptr, nullptr, &count), kInvalid);
  EXPECT_EQ(table, nullptr);
  expectNothingWritten();
}

TEST_F(OneCatalogue, that_is_refused_reaches_nothing) {
  const WindowsCalls calls;
  const QtfConditionInfo* conditions = nullptr;
  const QtfActionInfo* actions = nullptr;
  EXPECT_EQ(vqsPbGetConditions(&closed, &conditions, &count), kInvalid);
  EXPECT_EQ(vqsPbGetConditions(session, &conditions, nullptr), kInvalid);
  EXPECT_EQ(vqsPbGetActions(session, nullptr, &count), kInvalid);
  EXPECT_EQ(vqsPbGetActions(session, &actions, nullptr), kInvalid);
  EXPECT_TRUE(calls.all().empty());
}

TEST_F(OneCatalogue, of_actions_is_handed_out_without_a_session_or_handle) {
  const WindowsCalls calls;
  EXPECT_EQ(getActions(nullptr), kDone);
  EXPECT_EQ(calls.all(), std::vector<std::string>{}) << "there is nothing to ask with";
  EXPECT_EQ(getActions(&closed), kDone);
  EXPECT_EQ(calls.all(), std::vector<std::string>{"DeviceIoControl(0x80222044, 16, 16)"});
  expectNothingWritten();
}

TEST_F(OneCatalogue, is_marked_without_the_other) {
  driver.expectSame(kCatalogueCode).request("01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00").replyWord(8, 3);
  driver.expectSame(kCatalogueCode)
      .request("00 00 00 00 00 00 00 00 03 00 00 00 00 00 00 00 00 00 00")
      .replyAt(16, hex("70 71 72"));
  EXPECT_EQ(getConditions(session), kDone);
  EXPECT_EQ(kConditions.flags()[0], (Flags{0x70, 0x71}));
  EXPECT_EQ(kActions.flags(), actionFlags);
  kConditions.setFlags(conditionFlags);

  driver.expectSame(kCatalogueCode).request("03 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00").replyWord(8, 3);
  driver.expectSame(kCatalogueCode)
      .request("02 00 00 00 00 00 00 00 03 00 00 00 00 00 00 00 00 00 00")
      .replyAt(16, hex("73 74 75"));
  EXPECT_EQ(getActions(session), kDone);
  EXPECT_EQ(kActions.flags()[0], (Flags{0x73, 0x74}));
  EXPECT_EQ(kConditions.flags(), conditionFlags);
}

}  // namespace
}  // namespace test
