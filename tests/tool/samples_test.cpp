// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/tool/run_tool.h"

namespace test {
namespace {

nlohmann::json parse(const std::string& text) { return nlohmann::json::parse(text); }

nlohmann::json contentOf(const std::string& sampleName) {
  const Bytes bytes = sample(sampleName + ".json");
  return parse(std::string{bytes.begin(), bytes.end()});
}

class Sample : public testing::TestWithParam<const char*> {};

TEST_P(Sample, is_shown_as_what_it_holds) {
  const Tool tool;
  const auto expected = contentOf(GetParam());
  const auto run = tool.run({"binary", "show", samplePath(std::string{GetParam()} + ".bin"), "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  const auto shown = parse(run.out);
  EXPECT_EQ(shown["binaryVersion1"], expected["binaryVersion1"]);
  EXPECT_EQ(shown["binaryVersion2"], expected["binaryVersion2"]);
  EXPECT_EQ(shown["policies"], expected["policies"]);
  EXPECT_EQ(shown.size(), 3U);
}

TEST_P(Sample, is_listed_as_what_it_holds_once_it_is_loaded) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "balance-profile", samplePath(std::string{GetParam()} + ".bin")}).exitCode, 0);
  const auto run = tool.run({"store", "list", "balance-profile", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  const auto listed = parse(run.out);
  EXPECT_EQ(listed["store"], "balance-profile");
  EXPECT_EQ(listed["policies"], contentOf(GetParam())["policies"]);
  EXPECT_EQ(listed.size(), 2U);
}

std::string withoutPunctuation(const testing::TestParamInfo<const char*>& info) {
  std::string name = info.param;
  std::ranges::replace(name, '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(EverySample, Sample,
                         testing::Values("laptop-r3", "laptop-r4", "laptop-r5", "limits-r5", "wide-r5"),
                         withoutPunctuation);

TEST(Fleet, is_shown_with_all_its_policies) {
  const Tool tool;
  const auto run = tool.run({"binary", "show", samplePath("fleet-r5.bin"), "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(parse(run.out)["policies"].size(), 400U);
}

TEST(Fleet, fills_a_store_and_comes_back_byte_for_byte) {
  const Tool tool;
  EXPECT_EQ(tool.run({"store", "load", "asm", samplePath("fleet-r5.bin")}),
            done("400 policies from fleet-r5.bin are in the Asm store now (400 in all).\n"));
  ASSERT_EQ(tool.run({"store", "save", "asm", "copy.bin"}).exitCode, 0);
  EXPECT_EQ(difference(readFile(tool.path("copy.bin")), sample("fleet-r5.bin")), "");
}

}  // namespace
}  // namespace test
