// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

TEST(Features, that_follow_the_stores_and_the_slider) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  ASSERT_EQ(tool.run({"store", "load", "balance-profile", samplePath("wide-r5.bin")}).exitCode, 0);
  useDriver(tool, [](QtfSession* session) { EXPECT_EQ(vqsDynamicSliderEnableDisable(session, 1), kDone); });
  const auto run = tool.run({"features"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.out.starts_with("INDEX  SUPPORTED  ACTIVE  VALUE\n    0  no         ")) << run.out;
  EXPECT_TRUE(
      run.out.ends_with("    5  yes        yes         1\n"
                        "    6  yes        no          0\n"
                        "    7  yes        yes        16\n"
                        "    8  yes        yes         3\n"))
      << run.out;
  EXPECT_EQ(std::ranges::count(run.out, '\n'), 10) << run.out;
}

TEST(Features, of_one_policy_as_json) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  ASSERT_EQ(tool.run({"store", "load", "pb", "small.bin"}).exitCode, 0);
  const auto run = tool.run({"features", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  const auto features = nlohmann::json::parse(run.out).at("features");
  ASSERT_EQ(features.size(), 9U);
  EXPECT_EQ(features[0].at("supported"), 0);
  EXPECT_EQ(features[1].at("supported"), 1);
  EXPECT_EQ(features[6], nlohmann::json::parse(R"({"index": 6, "supported": 1, "active": 1, "value": 1})"));
  EXPECT_EQ(features[8], nlohmann::json::parse(R"({"index": 8, "supported": 1, "active": 0, "value": 0})"));
}

}  // namespace
}  // namespace test
