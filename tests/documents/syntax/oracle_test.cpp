// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/syntax/tree.h"
#include "tests/documents/syntax/oracle.h"
#include "tests/documents/syntax/random_document.h"

namespace documents {
namespace {

TEST(Oracle, sees_differences) {
  EXPECT_TRUE(agreesOnValue("{\"a\":[1,2.5,\"\\u00e4\",null,true]}"));
  EXPECT_FALSE(agreesOnValue("[1,]"));
  EXPECT_FALSE(agreesOnValue("[01]"));
  EXPECT_EQ(differenceToOracle("[1,]"), "");
  EXPECT_EQ(differenceToOracle("[,]"), "");
}

TEST(Oracle, agrees_on_random_json) {
  for (unsigned seed = 0; seed < 8000; ++seed) {
    RandomDocument random{seed};
    const std::string text = random.spaced(random.tokens(), false);
    ASSERT_TRUE(agreesOnValue(text)) << text;
  }
}

TEST(Oracle, agrees_on_random_json_with_comments_and_trailing_commas) {
  for (unsigned seed = 0; seed < 4000; ++seed) {
    RandomDocument random{seed};
    const std::string text = random.spaced(random.tokens(), true);
    Findings findings;
    parse(text, findings);
    ASSERT_TRUE(findings.empty()) << text;
    ASSERT_EQ(differenceToOracle(text), "") << text;
  }
}

TEST(Oracle, agrees_on_what_changed_json_is) {
  std::size_t readable = 0;
  std::size_t broken = 0;
  for (unsigned seed = 0; seed < 30000; ++seed) {
    RandomDocument random{seed};
    const std::string text = random.mutated(random.spaced(random.tokens(), seed % 3 == 0));
    ASSERT_EQ(differenceToOracle(text), "") << text;
    Findings findings;
    parse(text, findings);
    ++(findings.empty() ? readable : broken);
  }
  EXPECT_GT(readable, 3000U);
  EXPECT_GT(broken, 10000U);
}

TEST(Oracle, agrees_on_short_texts) {
  constexpr std::string_view kBytes = "{}[],:\"\\/*01-.eu \n";
  for (std::size_t number = 0; number < kBytes.size() * kBytes.size() * kBytes.size() * kBytes.size(); ++number) {
    std::string text;
    for (std::size_t rest = number; rest != 0; rest /= kBytes.size()) text += kBytes[rest % kBytes.size()];
    ASSERT_EQ(differenceToOracle(text), "") << text;
  }
}

}  // namespace
}  // namespace documents
