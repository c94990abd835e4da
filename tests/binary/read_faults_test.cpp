// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tests/binary/captured_output.h"
#include "tests/binary/reading.h"
#include "tests/support/faults.h"
#include "tests/support/results.h"

// Every allocation, open, seek, tell and read of the readers, failing in turn; and how much memory they take.

namespace test {
namespace {

constexpr Fault kAll[] = {Fault::kAllocation, Fault::kOpen, Fault::kSeek, Fault::kTell, Fault::kRead};

class ReadFaults : public BinaryReading {
 protected:
  std::string path_ = file(writtenFile({richPolicy(), smallPolicy()}, 1, 2));
};

TEST_F(ReadFaults, every_failure_of_a_read_gives_1_touches_nothing_and_leaks_nothing) {
  for (const Fault what : kAll) {
    int struck = 0;
    for (int nth = 1;; ++nth) {
      Faults faults;
      faults.fail(what, nth);
      CapturedOutput output;
      const auto outcome = read(path_, 2);
      const std::string said = output.text();
      EXPECT_EQ(faults.outstanding(), 0);
      EXPECT_EQ(faults.openStreams(), 0);
      EXPECT_EQ(outcome.size, kRoom);
      if (faults.calls(what) < nth) {
        EXPECT_EQ(outcome.status, kDone);
        break;
      }
      ++struck;
      EXPECT_EQ(outcome.status, kFailed) << static_cast<int>(what) << ' ' << nth;
      EXPECT_EQ(outcome.buffer, Bytes(outcome.buffer.size(), kPoison)) << static_cast<int>(what) << ' ' << nth;
      EXPECT_EQ(said, what == Fault::kRead ? kNotFullyRead : "");
    }
    EXPECT_GE(struck, 1) << static_cast<int>(what);
  }
}

TEST_F(ReadFaults, every_failure_of_a_size_query_gives_1_and_leaves_the_size_zero) {
  for (const Fault what : kAll) {
    Faults faults;
    faults.fail(what, 1);
    CapturedOutput output;
    const auto outcome = read(path_, 2, 0);
    EXPECT_EQ(output.text(), what == Fault::kRead ? kNotFullyRead : "");
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_EQ(outcome.size, 0U);
    EXPECT_EQ(faults.outstanding(), 0);
    EXPECT_EQ(faults.openStreams(), 0);
  }
}

TEST_F(ReadFaults, a_size_query_allocates_nothing_beyond_the_file) {
  const auto path = file(fileOf({}, {.policyCount = 0xFFFFFFFF}));
  Faults faults;
  EXPECT_EQ(read(path, 2, 0).status, kDone);
  EXPECT_LE(faults.peakBytes(), 32U);
}

TEST_F(ReadFaults, every_failure_of_a_summary_gives_1_and_only_its_own_memory_3) {
  for (const Fault what : kAll) {
    std::vector<vqsStatus> results;
    for (int nth = 1;; ++nth) {
      Faults faults;
      faults.fail(what, nth);
      CapturedOutput output;
      const auto outcome = readSummary(path_);
      const std::string said = output.text();
      EXPECT_EQ(faults.openStreams(), 0);
      if (faults.calls(what) < nth) {
        EXPECT_EQ(outcome.status, kDone);
        EXPECT_EQ(faults.outstanding(), 1);
        break;
      }
      EXPECT_EQ(faults.outstanding(), 0) << static_cast<int>(what) << ' ' << nth;
      EXPECT_EQ(said, what == Fault::kRead ? kNotFullyRead : "");
      EXPECT_EQ(outcome.untouched, outcome.status == kFailed);
      EXPECT_EQ(outcome.summary, nullptr);
      results.push_back(outcome.status);
    }
    ASSERT_FALSE(results.empty());
    EXPECT_EQ(results.back(), what == Fault::kAllocation ? 3U : 1U) << static_cast<int>(what);
    results.pop_back();
    EXPECT_EQ(results, std::vector<vqsStatus>(results.size(), kFailed)) << static_cast<int>(what);
  }
}

TEST_F(ReadFaults, a_summary_without_memory_leaves_a_null_pointer) {
  VqsPolicyBinaryV0 before;
  VqsPolicyBinaryV0* out = &before;
  int allocations = 0;
  {
    Faults faults;
    EXPECT_EQ(readSummary(path_).status, kDone);
    allocations = faults.calls(Fault::kAllocation);
  }
  Faults faults;
  faults.fail(Fault::kAllocation, allocations);
  EXPECT_EQ(vqsPbReadBinary(nullptr, path_.c_str(), &out), kNoMemory);
  EXPECT_EQ(out, nullptr);
}

TEST_F(ReadFaults, each_pass_of_a_summary_that_falls_short_speaks_once) {
  for (const int nth : {1, 2}) {
    Faults faults;
    faults.fail(Fault::kRead, nth);
    CapturedOutput output;
    EXPECT_EQ(readSummary(path_).status, kFailed);
    EXPECT_EQ(output.text(), kNotFullyRead);
    EXPECT_EQ(faults.calls(Fault::kRead), nth);
  }
}

TEST_F(ReadFaults, four_hundred_policies_take_no_more_memory_than_file_packed_and_result) {
  const auto path = samplePath("fleet-r5.bin");
  const std::uint64_t room = 200 + 400 * 3916;
  Faults faults;
  EXPECT_EQ(read(path, 2, room).status, kDone);
  EXPECT_LE(faults.peakBytes(), 87091U + 400 * 3972 + room);
  EXPECT_EQ(faults.outstanding(), 0);
}

TEST_F(ReadFaults, what_lies_behind_the_last_entry_takes_no_memory) {
  const struct {
    const char* title;
    Bytes content;
  } files[] = {{"revision 3", oldFileOf(3, {narrowEntry()})},
               {"revision 4", oldFileOf(4, {narrowEntry()})},
               {"revision 5", fileOf({Entry{}})}};
  for (const auto& [title, content] : files) {
    SCOPED_TRACE(title);
    const auto path = file(content);
    std::filesystem::resize_file(path, 0xFFFFFFFF);
    Faults faults;
    const auto outcome = read(path, 2);
    EXPECT_EQ(outcome.status, kDone);
    EXPECT_EQ(headOf(1, 2, 1, 2), Bytes(outcome.buffer.begin(), outcome.buffer.begin() + 200));
    EXPECT_EQ(readSummary(path).status, kDone);
    EXPECT_LE(faults.peakBytes(), 16384U);
  }
}

TEST_F(ReadFaults, a_file_that_is_refused_by_its_head_takes_no_memory) {
  const auto path = file(Bytes(64, 0));
  std::filesystem::resize_file(path, 0xFFFFFFFF);
  Faults faults;
  CapturedOutput output;
  EXPECT_EQ(read(path, 2).status, kFailed);
  EXPECT_EQ(readSummary(path).status, kFailed);
  EXPECT_EQ(output.text(), "");
  EXPECT_EQ(faults.calls(Fault::kAllocation), 0);
}

TEST_F(ReadFaults, a_count_that_the_file_cannot_hold_takes_no_memory_for_policies) {
  const Bytes content = oldFileOf(4, {narrowEntry()}, {}, {.policyCount = 0xFFFFFFFF});
  const auto path = file(content);
  Faults faults;
  std::uint64_t size = UINT64_MAX;
  VqsPolicyBinary buffer;
  EXPECT_EQ(vqsPbReadBinaryV2(session, path.c_str(), &buffer, &size, 0), kFailed);
  EXPECT_EQ(readSummary(path).status, kFailed);
  EXPECT_LE(faults.peakBytes(), 2 * content.size());
}

}  // namespace
}  // namespace test
