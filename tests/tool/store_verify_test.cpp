// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/run_tool.h"
#include "tests/tool/store_documents.h"

namespace test {
namespace {

/// A tool with documents, the later of which is in no store yet.
class StoreVerify : public testing::Test {
 protected:
  void SetUp() override {
    tool.writeText("laptop.json", kLaptop);
    tool.writeText("before.json", kBefore);
    tool.writeText("turned.json", kTurned);
  }

  void fill(const std::string& store, const std::string& file) const {
    ASSERT_EQ(tool.run({"store", "apply", store, file, "--yes"}).exitCode, 0);
  }
  ToolRun verify(const std::string& store, const std::string& file, const std::vector<std::string>& more = {}) const {
    std::vector<std::string> arguments = {"store", "verify", store, file};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tool.run(arguments);
  }

  Tool tool;
};

ToolRun differs(std::string out) { return {.exitCode = 1, .out = std::move(out), .err = ""}; }

TEST_F(StoreVerify, says_that_the_store_holds_what_the_file_says) {
  fill("asm", "laptop.json");
  EXPECT_EQ(verify("asm", "laptop.json"), done("The Asm store and laptop.json say the same, 3 policies.\n"));
  EXPECT_EQ(verify("asm", "laptop.json", {"--order"}).exitCode, 0);
}

TEST_F(StoreVerify, says_in_words_what_differs) {
  fill("asm", "before.json");
  EXPECT_EQ(verify("asm", "laptop.json"),
            differs("The Asm store differs from laptop.json in 3 of 4 policies.\n"
                    "  ~ version 3.41 in laptop.json, 3.40 in the store\n"
                    "  ~ 120 \"Hot chassis\"  when Skin Temperature op 4: 4600 centi-C in laptop.json, 4800 centi-C in "
                    "the store\n"
                    "  - 140 \"Dark room\"    only in laptop.json\n"
                    "  + 7 \"Old\"            only in the store\n"
                    "The order differs too (--order counts it): 10 \"Quiet on battery\" is last in the store, first in "
                    "laptop.json.\n"));
}

TEST_F(StoreVerify, counts_the_order_when_asked_only) {
  fill("asm", "turned.json");
  const std::string order = "10 \"Quiet on battery\" is last in the store, first in laptop.json.\n";
  EXPECT_EQ(verify("asm", "laptop.json"), done("The Asm store and laptop.json say the same, 3 policies.\n"
                                               "The order differs too (--order counts it): " +
                                               order));
  EXPECT_EQ(verify("asm", "laptop.json", {"--order"}),
            differs("The Asm store differs from laptop.json in the order of its policies.\n"
                    "The order differs: " +
                    order));
}

TEST_F(StoreVerify, compares_the_version_of_the_asm_store_only) {
  tool.writeText("other.json", std::string{kLaptop}.replace(std::string{kLaptop}.find("3.41"), 4, "3.42"));
  for (const std::string store : {"pb", "balance-profile"}) {
    fill(store, "laptop.json");
    EXPECT_EQ(verify(store, "other.json").exitCode, 0);
  }
  fill("asm", "laptop.json");
  EXPECT_EQ(verify("asm", "other.json"), differs("The Asm store differs from other.json in its version.\n"
                                                 "  ~ version 3.42 in other.json, 3.41 in the store\n"));
}

TEST_F(StoreVerify, an_empty_store_has_no_version) {
  EXPECT_EQ(verify("asm", "laptop.json"), differs("The Asm store differs from laptop.json in 3 of 3 policies.\n"
                                                  "  - 10 \"Quiet on battery\"  only in laptop.json\n"
                                                  "  - 120 \"Hot chassis\"      only in laptop.json\n"
                                                  "  - 140 \"Dark room\"        only in laptop.json\n"));
}

TEST_F(StoreVerify, takes_policy_binaries_and_registry_text) {
  ASSERT_EQ(tool.run({"store", "load", "asm", samplePath("laptop-r5.bin")}).exitCode, 0);
  EXPECT_EQ(verify("asm", samplePath("laptop-r5.bin"), {"--order"}).exitCode, 0);
  ASSERT_EQ(tool.run({"store", "save", "asm", "laptop.reg", "--registry"}).exitCode, 0);
  EXPECT_EQ(verify("asm", "laptop.reg", {"--order"}).exitCode, 0);
  EXPECT_EQ(verify("pb", "laptop.reg").exitCode, 1);
}

TEST_F(StoreVerify, json) {
  fill("asm", "before.json");
  const auto run = verify("asm", "laptop.json", {"--json"});
  EXPECT_EQ(run.exitCode, 1);
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_TRUE(run.out.starts_with("{\n  \"schema\": \"vqs/1\",\n")) << run.out;
  EXPECT_EQ(json["same"], false);
  EXPECT_EQ(json["versionDiffers"], true);
  EXPECT_EQ(json["first"]["version"], "3.41");
  EXPECT_EQ(json["second"]["version"], "3.40");
  ASSERT_EQ(json["policies"].size(), 3U);
  EXPECT_EQ(json["policies"][0]["id"], 120);
  EXPECT_EQ(json["policies"][1]["change"], "onlyInFirst");
  EXPECT_EQ(json["policies"][2]["change"], "onlyInSecond");
  ASSERT_EQ(verify("asm", "before.json", {"--json", "-o", "same.json"}), done(""));
  EXPECT_EQ(nlohmann::json::parse(tool.readText("same.json"))["same"], true);
}

TEST_F(StoreVerify, file_that_says_no_policies) {
  EXPECT_EQ(verify("asm", "missing.json"), failed("vqs: missing.json cannot be read: No such file or directory\n"));
  tool.writeText("broken.json", "{ \"policies\": [");
  const auto run = verify("asm", "broken.json");
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("broken.json:1:16: error P0001: ")) << run.err;
  EXPECT_TRUE(run.err.find("\nvqs: broken.json cannot be read: ") != std::string::npos) << run.err;
  EXPECT_EQ(verify("asn", "laptop.json").exitCode, 2);
}

}  // namespace
}  // namespace test
