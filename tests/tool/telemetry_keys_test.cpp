// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/support/listings.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

using Json = nlohmann::ordered_json;

Json keyJson(const ListingRow& row) {
  return {{"KeyId", row.number(0)},
          {"ElementType", row.number(2)},
          {"ElementCount", row.number(3)},
          {"Param", row.number(4)},
          {"Name", row.text(1)}};
}

void expectListed(const std::vector<std::string>& arguments, const std::string& listing) {
  const auto rows = readListing(listing);
  const auto run = Tool{}.run(arguments);
  ASSERT_EQ(run.exitCode, 0) << run;
  const auto keys = Json::parse(run.out).at("keys");
  ASSERT_EQ(keys.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(keys[i].dump(), keyJson(rows[i]).dump());
}

TEST(TelemetryKeys, every_field_of_every_key_as_json) { expectListed({"telemetry", "keys", "--json"}, kKeyListing); }

TEST(TelemetryKeys, every_ex_key_and_no_more) { expectListed({"telemetry", "keys", "--ex", "--json"}, kExKeyListing); }

TEST(TelemetryKeys, is_a_table_with_a_line_for_each) {
  const auto run = Tool{}.run({"telemetry", "keys"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(std::ranges::count(run.out, '\n'), listedIn(kKeyListing) + 1);
  EXPECT_TRUE(run.out.starts_with(" ID  NAME                             TYPE    COUNT  PARAM\n")) << run.out;
  for (const std::string line : {"  1  DeviceState                      bytes      12      0\n",
                                 " 24  PowerSource                      bytes       4      0\n",
                                 " 27  BatteryChargeRate                int32       1      0\n",
                                 " 29  PolicyPriority                   int32     100     10\n",
                                 " 47  SensorStatus                     uint16      4      0\n",
                                 "228  npuWorkload                      uint32      1      0\n"})
    EXPECT_NE(run.out.find('\n' + line), std::string::npos) << line << run.out;
}

TEST(TelemetryKeys, ex_table) {
  const auto run = Tool{}.run({"telemetry", "keys", "--ex"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(std::ranges::count(run.out, '\n'), listedIn(kExKeyListing) + 1);
  EXPECT_TRUE(
      run.out.starts_with("ID  NAME                 TYPE    COUNT  PARAM\n"
                          " 1  DeviceState          uint32      1      0\n"
                          " 2  PlatformType         uint32      1      0\n"
                          " 3  LidState             bool8       1      0\n"))
      << run.out;
  EXPECT_TRUE(run.out.ends_with("50  NpuBusy              int32       1      0\n")) << run.out;
}

}  // namespace
}  // namespace test
