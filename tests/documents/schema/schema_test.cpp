// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "documents/schema/schema.h"
#include "tests/support/temporary_folder.h"

namespace documents {
namespace {

TEST(DocumentSchema, is_the_one_that_the_pages_offer) {
  const auto page = test::readFile(VQS_DOCS "/vexoqtf-policies.schema.json");
  // Not shown as a difference of the whole: it is long.
  EXPECT_TRUE(makeSchema() == std::string(page.begin(), page.end()))
      << "docs/vexoqtf-policies.schema.json is another one; write it anew: vqs policy schema";
}

TEST(DocumentSchema, has_no_line_that_is_cut_off_in_a_window) {
  const std::string schema = makeSchema();
  std::size_t longest = 0;
  std::size_t begin = 0;
  for (std::size_t end = schema.find('\n'); end != std::string::npos; end = schema.find('\n', begin)) {
    // Patterns and descriptions cannot be broken.
    const std::string_view line = std::string_view(schema).substr(begin, end - begin);
    if (line.find("\"^") == std::string_view::npos && line.find("\"description\"") == std::string_view::npos)
      longest = std::max(longest, line.size());
    begin = end + 1;
  }
  EXPECT_EQ(begin, schema.size());
  EXPECT_GT(longest, 100U);
  EXPECT_LE(longest, 120U);
}

}  // namespace
}  // namespace documents
