// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/text/quote.h"

namespace documents {
namespace {

TEST(Quote, is_what_was_written) {
  EXPECT_EQ(quote(""), R"("")");
  EXPECT_EQ(quote("Power Source"), R"("Power Source")");
  EXPECT_EQ(quote("\xC3\xA4\xF0\x9F\x98\x80"), "\"\xC3\xA4\xF0\x9F\x98\x80\"");
}

TEST(Quote, has_no_control_characters_and_no_broken_bytes) {
  EXPECT_EQ(quote("a\n\x1B[31m\x7F"), R"("a\u000a\u001b[31m\u007f")");
  EXPECT_EQ(quote("\xC2\x9B\xFFz"), R"("\u009b\u00ffz")");
}

TEST(Quote, is_cut_when_it_is_long) {
  EXPECT_EQ(quote(std::string(60, 'x')), '"' + std::string(60, 'x') + '"');
  EXPECT_EQ(quote(std::string(61, 'x')), '"' + std::string(60, 'x') + "...\"");
}

}  // namespace
}  // namespace documents
