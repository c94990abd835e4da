// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "tests/documents/findings/said.h"

namespace documents {
namespace {

std::string withVersion(const std::string& version) {
  return R"({"version": )" + version + R"(, "policies": [{"id": 1, "when": [{"Lid State": "Open"}]}]})";
}

TEST(Version, is_two_numbers) {
  const auto result = readDocument(withVersion(R"("3.41")"));
  EXPECT_TRUE(result.findings.empty());
  ASSERT_TRUE(result.policies);
  EXPECT_EQ(result.policies->version1, 3);
  EXPECT_EQ(result.policies->version2, 41);
}

TEST(Version, goes_from_0_to_65535) {
  const auto result = readDocument(withVersion(R"("0.65535")"));
  ASSERT_TRUE(result.policies);
  EXPECT_EQ(result.policies->version1, 0);
  EXPECT_EQ(result.policies->version2, 65535);
}

TEST(Version, may_be_left_out) {
  const auto result = readDocument(withCondition(R"({"Lid State": "Open"})"));
  ASSERT_TRUE(result.policies);
  EXPECT_EQ(result.policies->version1, 0);
  EXPECT_EQ(result.policies->version2, 0);
}

TEST(Version, is_nothing_else) {
  for (const char* version :
       {"", "3", "3.", ".4", "3.4.1", "a.b", "65536.0", "0.65536", "03.4", "3.04", "-1.0", "3. 4", "1e1.0"}) {
    const std::string text = '"' + std::string(version) + '"';
    EXPECT_EQ(said(withVersion(text)),
              "P0018 error 1:13-" + std::to_string(13 + text.size()) + " version: " + text +
                  " is no version: two numbers from 0 to 65535 with a point between them are expected\n");
  }
}

TEST(Version, as_a_number_is_put_in_quotes) {
  EXPECT_EQ(said(withVersion("3.41")),
            "P0013 error 1:13-17 version: \"version\" cannot be a number: a string such as \"3.41\" is expected\n"
            "  certain: write \"3.41\"\n");
  EXPECT_EQ(said(withVersion("3")),
            "P0013 error 1:13-14 version: \"version\" cannot be a number: a string such as \"3.41\" is expected\n");
}

}  // namespace
}  // namespace documents
