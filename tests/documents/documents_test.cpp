// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/documents.h"

namespace documents {
namespace {

TEST(ReadDocument, says_nothing_about_a_policy_in_the_catalogues_words) {
  const auto result =
      readDocument(R"({ "policies": [{ "id": 1, "name": "a", "when": [{ "Power Source": "DC Power" }] }] })");
  EXPECT_TRUE(result.findings.empty());
  ASSERT_TRUE(result.policies);
  ASSERT_EQ(result.policies->policies.size(), 1U);
  EXPECT_EQ(result.policies->policies[0].conditions[0].value, 1U);
}

}  // namespace
}  // namespace documents
