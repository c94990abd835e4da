// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"
#include "tests/tool/small_binary.h"

namespace test {
namespace {

TEST(Features, of_a_fresh_driver) {
  EXPECT_EQ(Tool{}.run({"features"}), done("INDEX  SUPPORTED  ACTIVE  VALUE\n"
                                           "    0  no         no          0\n"
                                           "    1  yes        no          0\n"
                                           "    2  yes        no          0\n"
                                           "    3  yes        no          0\n"
                                           "    4  yes        no          0\n"
                                           "    5  yes        no          0\n"
                                           "    6  yes        no          0\n"
                                           "    7  yes        no          0\n"
                                           "    8  yes        no          0\n"));
}

TEST(Features, that_are_active) {
  const Tool tool;
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  ASSERT_EQ(tool.run({"store", "load", "balance-profile", samplePath("wide-r5.bin")}).exitCode, 0);
  useDriver(tool, [](QtfSession* session) {
    VqsInBagTable table{};
    EXPECT_EQ(vqsInBagPolicyTableControl(session, VQS_TABLE_SET, &table), kDone);
    EXPECT_EQ(vqsInBagPolicyTableControl(session, VQS_TABLE_SET, &table), kDone);
    EXPECT_EQ(vqsDynamicSliderEnableDisable(session, 1), kDone);
  });
  EXPECT_EQ(tool.run({"features"}), done("INDEX  SUPPORTED  ACTIVE  VALUE\n"
                                         "    0  no         no          0\n"
                                         "    1  yes        yes         2\n"
                                         "    2  yes        no          0\n"
                                         "    3  yes        no          0\n"
                                         "    4  yes        no          0\n"
                                         "    5  yes        yes         1\n"
                                         "    6  yes        no          0\n"
                                         "    7  yes        yes        16\n"
                                         "    8  yes        yes         3\n"));
}

TEST(Features, as_json) {
  const Tool tool;
  tool.write("small.bin", smallBinary());
  ASSERT_EQ(tool.run({"store", "load", "pb", "small.bin"}).exitCode, 0);
  const auto run = tool.run({"features", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  const auto features = nlohmann::json::parse(run.out).at("features");
  ASSERT_EQ(features.size(), 9U);
  EXPECT_EQ(features[0], nlohmann::json::parse(R"({"index": 0, "supported": 0, "active": 0, "value": 0})"));
  EXPECT_EQ(features[6], nlohmann::json::parse(R"({"index": 6, "supported": 1, "active": 1, "value": 1})"));
  EXPECT_EQ(features[8], nlohmann::json::parse(R"({"index": 8, "supported": 1, "active": 0, "value": 0})"));
}

}  // namespace
}  // namespace test
