// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/bind/path.h"

namespace documents {
namespace {

TEST(Path, of_the_document_is_empty) { EXPECT_EQ(Path{}.text(), ""); }

TEST(Path, has_points_and_brackets) {
  const Path when = Path{}.member("policies").element(2).member("when");
  EXPECT_EQ(when.text(), "policies[2].when");
  EXPECT_EQ(when.name(), "when");
  EXPECT_EQ(when.element(4).member("value").element(0).text(), "policies[2].when[4].value[0]");
  EXPECT_EQ(when.element(4).index(), 4U);
}

}  // namespace
}  // namespace documents
