// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/support/results.h"
#include "tests/tool/driver_client.h"

namespace test {
namespace {

void updateSensor(QtfSession* session, const Record& record) {
  VqsSensorUpdate update{};
  std::ranges::copy(record.bytes(), update.data);
  EXPECT_EQ(vqsAtstSimulateSensorUpdate(session, &update), kDone);
}

/// A tool whose driver was told what its sensors say.
class Sensors : public testing::Test {
 protected:
  void SetUp() override {
    useDriver(tool, [](QtfSession* session) {
      updateSensor(session, Record{16}.u32(0, 0).u32(4, 320));
      updateSensor(session, Record{16}.u32(0, 1).u32(4, 12).u32(8, 0xFFFFFFFF).u32(12, 0xFFFFFC18));
      updateSensor(session, Record{16}.u32(0, 2).u32(4, 105).u32(12, 7));
    });
  }

  Tool tool;
};

TEST_F(Sensors, are_a_table) {
  EXPECT_EQ(tool.run({"sensors"}), done("SENSOR  STATUS  WORD 0           WORD 1              WORD 2\n"
                                        "     0       1     320                0                   0\n"
                                        "     1       1      12  4294967295 (-1)  4294966296 (-1000)\n"
                                        "     2       1     105                0                   7\n"
                                        "     3       0       0                0                   0\n"));
}

TEST_F(Sensors, as_json) {
  const auto run = tool.run({"sensors", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"({"sensors": [
      {"status": 1, "words": [320, 0, 0]},
      {"status": 1, "words": [12, 4294967295, 4294966296]},
      {"status": 1, "words": [105, 0, 7]},
      {"status": 0, "words": [0, 0, 0]}]})"));
}

}  // namespace
}  // namespace test
