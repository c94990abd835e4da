// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "tests/journey/client.h"
#include "tests/support/bytes.h"
#include "tests/support/results.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

// Files need a session, but no driver: one that was never opened serves.
struct Stand {
  void* handle = this;
  std::uint64_t rest[2] = {};
};

class PolicyFiles : public ::testing::Test {
 protected:
  QtfSession* session() { return reinterpret_cast<QtfSession*>(&stand_); }

  Stand stand_;
  TemporaryFolder folder_;
};

TEST_F(PolicyFiles, the_library_knows_its_version) {
  std::uint32_t words[4] = {7, 7, 7, 7};
  ASSERT_EQ(vqsGetVersion(words), kDone);
  EXPECT_EQ((std::vector<std::uint32_t>(words, words + 4)), (std::vector<std::uint32_t>{0, 1, 0, 0}));
}

TEST_F(PolicyFiles, a_file_read_and_written_again_is_the_same_file) {
  PolicyFile file{session(), samplePath("laptop-r5.bin")};
  ASSERT_EQ(file.head().policyCount, 16U);
  EXPECT_EQ(file.head().binaryVersion1, 3);
  EXPECT_EQ(file.head().binaryVersion2, 41);
  PolicyListV2 list{16};
  std::copy_n(file.policies(), 16, list.policies());
  const auto path = folder_.path("again.bin");
  ASSERT_EQ(vqsPbCreateBinaryV2(session(), &list.head(), 3, 41, path.c_str()), kDone);
  EXPECT_EQ(difference(readFile(path), sample("laptop-r5.bin")), "");
}

TEST_F(PolicyFiles, older_revisions_hold_the_same_policies) {
  PolicyFile newest{session(), samplePath("laptop-r5.bin")};
  PolicyFile older{session(), samplePath("laptop-r4.bin")};
  ASSERT_EQ(older.head().policyCount, 16U);
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(std::memcmp(older.policies()[i].name, newest.policies()[i].name, 128), 0);
    EXPECT_EQ(older.policies()[i].actionCount, newest.policies()[i].actionCount);
  }
}

TEST_F(PolicyFiles, text_beyond_8_bits_survives) {
  PolicyFile file{session(), samplePath("wide-r5.bin")};
  ASSERT_EQ(file.head().policyCount, 3U);
  const std::uint16_t kana[] = {0x30D0, 0x30C3, 0x30C6, 0x30EA, 0x30FC, 0x7BC0, 0x7D04, 0};
  EXPECT_EQ(std::memcmp(file.policies()[1].name, kana, sizeof(kana)), 0);
  PolicyListV2 list{3};
  std::copy_n(file.policies(), 3, list.policies());
  const auto path = folder_.path("wide.bin");
  ASSERT_EQ(vqsPbCreateBinaryV2(session(), &list.head(), 5, 5, path.c_str()), kDone);
  EXPECT_EQ(difference(readFile(path), sample("wide-r5.bin")), "");
}

TEST_F(PolicyFiles, narrow_text_goes_both_ways_in_the_plain_locale) {
  VqsPolicyV0 policy{};
  std::strcpy(policy.name, "caf\xE9");
  policy.id = 5;
  policy.conditionCount = 1;
  policy.textCount = 1;
  std::memset(policy.texts[0].text, 'x', 32);
  const auto path = folder_.path("narrow.bin");
  ASSERT_EQ(vqsPbCreateBinary(nullptr, &policy, 1, 1, 2, path.c_str()), kDone);
  PolicyFile file{session(), path};
  const std::uint16_t wide[] = {'c', 'a', 'f', 0xE9, 0};
  EXPECT_EQ(std::memcmp(file.policies()[0].name, wide, sizeof(wide)), 0);
  EXPECT_EQ(file.policies()[0].texts[0].text[31], 'x');
  EXPECT_EQ(file.policies()[0].texts[0].text[32], 0);
}

TEST_F(PolicyFiles, a_name_without_end_is_refused_and_the_caller_lives) {
  VqsPolicyV0 policy{};
  std::memset(policy.name, 'n', 64);
  policy.conditionCount = 1;
  const auto path = folder_.path("none.bin");
  EXPECT_EQ(vqsPbCreateBinary(nullptr, &policy, 1, 1, 2, path.c_str()), kFailed);
  EXPECT_FALSE(fileExists(path));
}

TEST_F(PolicyFiles, four_gibibytes_are_no_policy_binary_whatever_they_begin_with) {
  const auto path = folder_.write("huge.bin", sample("laptop-r5.bin"));
  for (const std::uintmax_t beyond : {0U, 79U, 3371U}) {
    std::filesystem::resize_file(path, (std::uintmax_t{1} << 32) + beyond);
    VqsPolicyBinary none{};
    std::uint64_t size = 0;
    EXPECT_EQ(vqsPbReadBinaryV2(session(), path.c_str(), &none, &size, 2), kFailed) << beyond;
    EXPECT_EQ(size, 0U);
    VqsPolicyBinaryV0* summary = nullptr;
    EXPECT_EQ(vqsPbReadBinary(nullptr, path.c_str(), &summary), kFailed) << beyond;
    EXPECT_EQ(summary, nullptr);
  }
}

TEST_F(PolicyFiles, bytes_behind_the_last_entry_are_ignored_however_many) {
  const auto path = folder_.write("long.bin", sample("laptop-r5.bin"));
  std::filesystem::resize_file(path, 0xFFFFFFFF);
  PolicyFile file{session(), path};
  PolicyFile usual{session(), samplePath("laptop-r5.bin")};
  ASSERT_EQ(file.head().policyCount, 16U);
  EXPECT_EQ(std::memcmp(file.policies(), usual.policies(), 16 * sizeof(VqsPolicyV2)), 0);
}

TEST_F(PolicyFiles, what_is_no_policy_binary_is_refused) {
  VqsPolicyBinary none{};
  std::uint64_t size = 0;
  const auto text = folder_.write("text.bin", hex("68 65 6c 6c 6f 20 77 6f 72 6c 64 21 21 21 21 21 21"));
  EXPECT_EQ(vqsPbReadBinaryV2(session(), text.c_str(), &none, &size, 2), kFailed);
  EXPECT_EQ(vqsPbReadBinaryV2(session(), folder_.path("missing").c_str(), &none, &size, 2), kFailed);
  VqsPolicyBinaryV0* summary = nullptr;
  EXPECT_EQ(vqsPbReadBinary(nullptr, text.c_str(), &summary), kFailed);
  EXPECT_EQ(summary, nullptr);
}

}  // namespace
}  // namespace test
