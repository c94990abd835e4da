// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tests/support/listings.h"
#include "tests/tool/run_tool.h"

namespace test {
namespace {

using Json = nlohmann::ordered_json;

ToolRun showTelemetry(std::vector<std::string> further = {}) {
  further.insert(further.begin(), {"telemetry", "show"});
  return Tool{}.run(further, withSteadyDriver());
}

std::vector<std::string> namesOf(const Json& values) {
  std::vector<std::string> names;
  for (const auto& [name, value] : values.items()) names.push_back(name);
  return names;
}

/// The names of a listing, by id: the order of the records in the simulated driver's log.
std::vector<std::string> namesById(const std::string& listing) {
  auto rows = readListing(listing);
  std::ranges::sort(rows, {}, [](const ListingRow& row) { return row.number(0); });
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const auto& row : rows) names.push_back(row.text(1));
  return names;
}

/// Texts are strings, single numbers are numbers, and several are arrays of so many.
void expectShapes(const Json& values, const std::string& listing) {
  for (const auto& row : readListing(listing)) {
    const auto& value = values.at(row.text(1));
    if (row.number(2) == 0) {
      EXPECT_TRUE(value.is_string()) << row.text(1) << value;
    } else if (row.number(3) == 1) {
      EXPECT_TRUE(value.is_number_integer()) << row.text(1) << value;
    } else {
      EXPECT_TRUE(value.is_array()) << row.text(1) << value;
      EXPECT_EQ(value.size(), static_cast<std::size_t>(row.number(3))) << row.text(1);
    }
  }
}

TEST(TelemetryShow, every_key_as_json) {
  const auto run = showTelemetry({"--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  const auto values = Json::parse(run.out).at("values");
  EXPECT_EQ(values.size(), listedIn(kKeyListing));
  EXPECT_EQ(namesOf(values), namesById(kKeyListing));
  expectShapes(values, kKeyListing);
  EXPECT_EQ(values.at("PowerSource"), "DC");
  EXPECT_EQ(values.at("nvmeModel"), "Simulated NVMe 512 GB");
  EXPECT_LT(values.at("BatteryChargeRate"), 0);
  EXPECT_EQ(values.at("SensorStatus"), Json::parse("[1, 1, 1, 0]"));
  EXPECT_EQ(values.at("PolicyPriority"), Json(std::vector<int>(100, -1)));
}

TEST(TelemetryShow, every_ex_key_as_json) {
  const auto run = showTelemetry({"--ex", "--json"});
  ASSERT_EQ(run.exitCode, 0) << run;
  const auto values = Json::parse(run.out).at("values");
  EXPECT_EQ(values.size(), listedIn(kExKeyListing));
  EXPECT_EQ(namesOf(values), namesById(kExKeyListing));
  expectShapes(values, kExKeyListing);
  EXPECT_EQ(values.at("PowerSource"), 1);
  EXPECT_EQ(values.at("DesignedBatCap"), 60000);
  EXPECT_LT(values.at("BatChargeRate"), 0);
  EXPECT_EQ(values.at("DisplayState"), Json::parse("[1, 0, 0, 0]"));
}

TEST(TelemetryShow, is_a_table_with_a_line_for_each_key) {
  const auto run = showTelemetry();
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(std::ranges::count(run.out, '\n'), listedIn(kKeyListing) + 1);
  EXPECT_TRUE(
      run.out.starts_with(" ID  NAME                             VALUE\n"
                          "  1  DeviceState                      Active\n"
                          "  2  LidClosed                        No\n"))
      << run.out;
  for (const std::string line :
       {" 25  DesignedBatteryCapacity          60000\n", " 29  PolicyPriority                   100*-1\n",
        " 47  SensorStatus                     1,1,1,0\n",
        "123  nvmeModel                        Simulated NVMe 512 GB\n"})
    EXPECT_NE(run.out.find('\n' + line), std::string::npos) << line << run.out;
}

TEST(TelemetryShow, ex_table) {
  const auto run = showTelemetry({"--ex"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(std::ranges::count(run.out, '\n'), listedIn(kExKeyListing) + 1);
  EXPECT_NE(run.out.find("\n23  DesignedBatCap       60000\n"), std::string::npos) << run.out;
}

}  // namespace
}  // namespace test
