// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "documents/bind/number.h"
#include "tests/documents/findings/said.h"

namespace documents {
namespace {

TEST(WholeNumber, is_digits_with_or_without_a_minus) {
  EXPECT_EQ(wholeNumber("0"), 0);
  EXPECT_EQ(wholeNumber("-0"), 0);
  EXPECT_EQ(wholeNumber("4294967295"), 4294967295);
  EXPECT_EQ(wholeNumber("-2147483648"), -2147483648);
  for (const char* written : {"", "-", "1.0", "1e3", "1E3", "+1", "01", "-01", "0x1", "1 ", " 1", "--1"})
    EXPECT_EQ(wholeNumber(written), std::nullopt) << written;
}

TEST(WholeNumber, of_too_many_digits_is_larger_than_any_field) {
  EXPECT_GT(wholeNumber(std::string(1000, '9')), std::int64_t{1} << 40);
  EXPECT_LT(wholeNumber('-' + std::string(1000, '9')), -(std::int64_t{1} << 40));
}

TEST(DigitsOf, are_those_of_a_number_whose_fraction_is_none) {
  EXPECT_EQ(digitsOf("1.0"), "1");
  EXPECT_EQ(digitsOf("-1.000"), "-1");
  EXPECT_EQ(digitsOf("1e3"), "1000");
  EXPECT_EQ(digitsOf("1E+2"), "100");
  EXPECT_EQ(digitsOf("1.25e2"), "125");
  EXPECT_EQ(digitsOf("0.5e1"), "5");
  EXPECT_EQ(digitsOf("0.0"), "0");
  EXPECT_EQ(digitsOf("0e5"), "0");
}

TEST(DigitsOf, are_none_of_another_number) {
  for (const char* written : {"1.5", "1e-1", "1.25e1", "1e400", "1e99999999999", "-0.5"})
    EXPECT_EQ(digitsOf(written), std::nullopt) << written;
}

TEST(Numbers, at_the_ends_of_their_fields_are_taken) {
  const auto result = readDocument(
      withMembers(R"("flag0": 255, "flag1": 0, "flag2": 1, "param0": 4294967295, "param1": 0, "param2": 2147483648)"));
  EXPECT_TRUE(result.findings.empty());
  ASSERT_TRUE(result.policies);
  const Policy& policy = result.policies->policies.at(0);
  EXPECT_EQ(policy.flag0, 255);
  EXPECT_EQ(policy.flag1, 0);
  EXPECT_EQ(policy.flag2, 1);
  EXPECT_EQ(policy.param0, 4294967295);
  EXPECT_EQ(policy.param1, 0U);
  EXPECT_EQ(policy.param2, 2147483648);
}

TEST(Numbers, beyond_the_ends_of_their_fields_are_refused) {
  EXPECT_EQ(said(withMembers(R"("flag0": 256)")),
            "P0016 error 1:71-74 policies[0].flag0: \"flag0\" cannot be 256: a number from 0 to 255 is expected\n");
  EXPECT_EQ(said(withMembers(R"("flag2": -1)")),
            "P0016 error 1:71-73 policies[0].flag2: \"flag2\" cannot be -1: a number from 0 to 255 is expected\n");
  EXPECT_EQ(said(withMembers(R"("param1": 4294967296)")),
            "P0016 error 1:72-82 policies[0].param1: \"param1\" cannot be 4294967296: a number from 0 to 4294967295 is "
            "expected\n");
}

TEST(Numbers, of_many_digits_are_cut_in_the_sentence) {
  EXPECT_EQ(said(withMembers("\"flag0\": " + std::string(100, '9'))),
            "P0016 error 1:71-171 policies[0].flag0: \"flag0\" cannot be 999999999999999999999999...: a number from 0 "
            "to 255 is expected\n");
}

TEST(Numbers, in_quotes_are_written_without) {
  EXPECT_EQ(said(withMembers(R"("flag0": "12")")),
            "P0013 error 1:71-75 policies[0].flag0: \"flag0\" cannot be a string: a number from 0 to 255 is expected\n"
            "  certain: write 12\n");
  EXPECT_EQ(
      said(withMembers(R"("flag0": "256")")),
      "P0013 error 1:71-76 policies[0].flag0: \"flag0\" cannot be a string: a number from 0 to 255 is expected\n");
}

TEST(Numbers, are_of_no_other_kind) {
  EXPECT_EQ(said(withMembers(R"("flag0": null)")),
            "P0013 error 1:71-75 policies[0].flag0: \"flag0\" cannot be null: a number from 0 to 255 is expected\n");
  EXPECT_EQ(said(withMembers(R"("flag0": true)")),
            "P0013 error 1:71-75 policies[0].flag0: \"flag0\" cannot be true or false: a number from 0 to 255 is "
            "expected\n");
  EXPECT_EQ(said(withMembers(R"("flag0": [1])")),
            "P0013 error 1:71-74 policies[0].flag0: \"flag0\" cannot be a list: a number from 0 to 255 is expected\n");
  EXPECT_EQ(said(withMembers(R"("flag0": {})")),
            "P0013 error 1:71-73 policies[0].flag0: \"flag0\" cannot be an object: a number from 0 to 255 is "
            "expected\n");
}

TEST(Numbers, with_a_fraction_are_refused) {
  EXPECT_EQ(said(withMembers(R"("flag0": 1.5)")),
            "P0017 error 1:71-74 policies[0].flag0: 1.5 is not written as a whole number: digits alone are "
            "expected\n");
  EXPECT_EQ(said(withMembers(R"("flag0": 1e1)")),
            "P0017 error 1:71-74 policies[0].flag0: 1e1 is not written as a whole number: digits alone are expected\n"
            "  certain: write 10\n");
}

}  // namespace
}  // namespace documents
