// SPDX-License-Identifier: Apache-2.0
#include "src/binary/writer.h"

#include <gtest/gtest.h>

#include "tests/support/faults.h"
#include "tests/support/packed.h"
#include "tests/support/policy_file.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using vqs::writePolicyBinary;

TEST(WritePolicyBinary, writes_all_bytes_with_one_write_and_one_allocation) {
  const TemporaryFolder folder;
  const auto policies = packedRecords({packedPolicy(richPolicy()), packedPolicy(smallPolicy())});
  const auto path = folder.path("out.bin");
  Faults faults;
  EXPECT_EQ(writePolicyBinary(policies, {7, 8}, path.c_str()), kDone);
  EXPECT_EQ(faults.calls(Fault::kAllocation), 1);
  EXPECT_EQ(faults.calls(Fault::kOpen), 1);
  EXPECT_EQ(faults.calls(Fault::kWrite), 1);
  EXPECT_EQ(faults.outstanding(), 0);
  EXPECT_EQ(faults.openStreams(), 0);
  EXPECT_EQ(difference(readFile(path), writtenFile({richPolicy(), smallPolicy()}, 7, 8)), "");
}

TEST(WritePolicyBinary, tells_missing_arguments_from_an_empty_array) {
  const TemporaryFolder folder;
  const auto policies = packedRecords({packedPolicy(smallPolicy())});
  const auto path = folder.path("out.bin");
  EXPECT_EQ(writePolicyBinary({}, {1, 2}, path.c_str()), kInvalid);
  EXPECT_EQ(writePolicyBinary(policies, {1, 2}, nullptr), kInvalid);
  EXPECT_EQ(writePolicyBinary(std::span{policies}.first(0), {1, 2}, nullptr), kInvalid);
  EXPECT_EQ(writePolicyBinary(std::span{policies}.first(0), {1, 2}, path.c_str()), kFailed);
  EXPECT_FALSE(fileExists(path));
}

TEST(WritePolicyBinary, fails_when_memory_or_the_file_is_not_to_be_had) {
  const TemporaryFolder folder;
  const auto policies = packedRecords({packedPolicy(smallPolicy())});
  const auto path = folder.path("out.bin");
  for (const Fault what : {Fault::kAllocation, Fault::kOpen}) {
    Faults faults;
    faults.fail(what, 1);
    EXPECT_EQ(writePolicyBinary(policies, {1, 2}, path.c_str()), kFailed);
    EXPECT_EQ(faults.outstanding(), 0);
    EXPECT_EQ(faults.openStreams(), 0);
    EXPECT_FALSE(fileExists(path));
  }
  EXPECT_EQ(writePolicyBinary(policies, {1, 2}, folder.path("no/such/folder").c_str()), kFailed);
}

TEST(WritePolicyBinary, does_not_notice_a_failed_write) {
  const TemporaryFolder folder;
  const auto policies = packedRecords({packedPolicy(smallPolicy())});
  const auto path = folder.write("out.bin", {1, 2, 3});
  Faults faults;
  faults.fail(Fault::kWrite, 1);
  EXPECT_EQ(writePolicyBinary(policies, {1, 2}, path.c_str()), kDone);
  EXPECT_EQ(faults.openStreams(), 0);
  EXPECT_EQ(readFile(path), Bytes{});
}

}  // namespace
}  // namespace test
