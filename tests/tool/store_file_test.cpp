// SPDX-License-Identifier: Apache-2.0
#include "tool/driver/store_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/policy_model.h"
#include "tests/support/stub_store.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

constexpr std::uint32_t kPbRead = 0x80222064;
constexpr std::uint32_t kAsmRead = 0x80222050;
constexpr std::uint32_t kAsmModify = 0x80222054;

/// A full store, for which each request is counted.
class StoreFile : public ::testing::Test {
 protected:
  static std::vector<Bytes> numbered(std::uint32_t count) {
    std::vector<Bytes> packed;
    for (std::uint32_t id = 0; id < count; ++id) {
      Policy policy = smallPolicy();
      policy.id = id;
      packed.push_back(packedPolicy(policy));
    }
    return packed;
  }

  tool::SavedStore save(const char* store, bool asRegistryText) {
    return tool::saveStore(own, tool::storeNamed(store), {}, folder.path("saved"), asRegistryText);
  }

  StubStore driver{numbered(400)};
  // The store closes its session itself.
  tool::Session own{driver.session()};
  TemporaryFolder folder;
};

TEST_F(StoreFile, is_written_with_each_policy_asked_for_once) {
  const auto saved = save("asm", false);
  EXPECT_EQ(saved.count, 400U);
  EXPECT_EQ(saved.versions.first, 3);
  EXPECT_EQ(saved.versions.second, 41);
  // The count, 80 times five policies, and the versions.
  EXPECT_EQ(driver.codes().size(), 82U);
  EXPECT_EQ(std::ranges::count(driver.codes(), kAsmRead), 81);
  EXPECT_EQ(std::ranges::count(driver.codes(), kAsmModify), 1);
}

TEST_F(StoreFile, as_registry_text_takes_no_more_requests) {
  EXPECT_EQ(save("asm", true).count, 400U);
  EXPECT_EQ(driver.codes().size(), 82U);
}

TEST_F(StoreFile, of_a_store_without_versions_is_not_preceded_by_a_question_for_them) {
  EXPECT_EQ(save("pb", false).count, 400U);
  EXPECT_EQ(driver.codes(), std::vector<std::uint32_t>(81, kPbRead));
}

TEST_F(StoreFile, of_an_empty_store_is_refused_and_not_written) {
  driver.claim(0);
  EXPECT_THROW(save("pb", false), std::runtime_error);
  // The count for the file, and again to say why there is none.
  EXPECT_EQ(driver.codes(), std::vector<std::uint32_t>(2, kPbRead));
  EXPECT_FALSE(fileExists(folder.path("saved")));
}

}  // namespace
}  // namespace test
