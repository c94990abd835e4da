// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <span>

#include "tests/tool/driver_client.h"
#include "tests/tool/store_documents.h"

namespace test {
namespace {

class StoreApply : public testing::Test {
 protected:
  void SetUp() override {
    tool.writeText("laptop.json", kLaptop);
    tool.writeText("before.json", kBefore);
    tool.writeText("turned.json", kTurned);
  }

  ToolRun apply(const std::string& store, const std::string& file, const std::vector<std::string>& more) const {
    std::vector<std::string> arguments = {"store", "apply", store, file};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tool.run(arguments);
  }
  void fill(const std::string& store, const std::string& file) const {
    ASSERT_EQ(apply(store, file, {"--yes"}).exitCode, 0);
  }
  /// What the store holds, for comparison.
  [[nodiscard]] std::string held(const std::string& store) const {
    return tool.run({"store", "list", store, "--json"}).out;
  }

  Tool tool;
};

TEST_F(StoreApply, brings_the_store_to_what_the_file_says) {
  fill("asm", "before.json");
  EXPECT_EQ(apply("asm", "laptop.json", {"--yes"}),
            done("5 requests to send: delete 7, delete 120, add 120, add 140, set version 3.41\n"
                 "The Asm store holds what laptop.json says now (3 policies, version 3.41).\n"));
  EXPECT_EQ(tool.run({"store", "verify", "asm", "laptop.json", "--order"}).exitCode, 0);
}

TEST_F(StoreApply, shows_the_requests_and_sends_none) {
  fill("asm", "before.json");
  const auto before = held("asm");
  EXPECT_EQ(apply("asm", "laptop.json", {"--dry-run"}),
            done("would send 5 requests: delete 7, delete 120, add 120, add 140, set version 3.41\n"));
  EXPECT_EQ(held("asm"), before);
  EXPECT_EQ(apply("asm", "before.json", {"--dry-run"}),
            done("The Asm store holds what before.json says already, nothing to send.\n"));
}

TEST_F(StoreApply, sends_nothing_twice) {
  fill("asm", "laptop.json");
  EXPECT_EQ(apply("asm", "laptop.json", {"--yes"}),
            done("The Asm store holds what laptop.json says already, nothing to send.\n"));
}

TEST_F(StoreApply, leaves_the_order_alone_unless_it_is_asked_for) {
  fill("asm", "turned.json");
  EXPECT_EQ(
      apply("asm", "laptop.json", {"--yes"}),
      done("The Asm store holds what laptop.json says already, nothing to send (order: 10 will be last; --order to "
           "rewrite 2).\n"));
  EXPECT_EQ(apply("asm", "laptop.json", {"--yes", "--order"}),
            done("4 requests to send: delete 120, add 120, delete 140, add 140\n"
                 "The Asm store holds what laptop.json says now (3 policies, version 3.41).\n"));
  EXPECT_EQ(tool.run({"store", "verify", "asm", "laptop.json", "--order"}).exitCode, 0);
}

TEST_F(StoreApply, tells_that_more_than_one_policy_will_be_elsewhere) {
  const std::string policy = R"(, "when": [{ "Power Source": 0 }] })";
  const auto document = [&](const std::vector<std::string>& ids) {
    std::string text = R"({ "policies": [)";
    for (const auto& id : ids) text.append(R"({ "id": )").append(id).append(policy).append(", ");
    return text + "] }";
  };
  tool.writeText("some.json", document({"1", "2", "3", "4", "5", "6"}));
  tool.writeText("mixed.json", document({"6", "5", "3", "4", "2", "1"}));
  fill("pb", "some.json");
  EXPECT_EQ(
      apply("pb", "mixed.json", {"--dry-run"}),
      done("The Policy Builder store holds what mixed.json says already, nothing to send (order: 4 policies will be "
           "elsewhere; --order to rewrite 6).\n"));
}

/// What a document says: its version's second number, and for each id the value of a condition.
struct Said {
  int version = 0;
  std::vector<std::pair<int, int>> policies;
};

std::string documentOf(const Said& said) {
  std::string text = R"({ "version": "1.)" + std::to_string(said.version) + R"(", "policies": [)";
  for (const auto& [id, value] : said.policies)
    text += R"({ "id": )" + std::to_string(id) + R"(, "when": [{ "Power Source": )" + std::to_string(value) + " }] },";
  return text + "] }";
}

Said randomSaid(std::mt19937& random) {
  Said said{.version = static_cast<int>(random() % 2), .policies = {}};
  std::vector<int> ids = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  std::ranges::shuffle(ids, random);
  for (const int id : std::span{ids}.first(1 + random() % ids.size()))
    said.policies.emplace_back(id, static_cast<int>(random() % 2));
  return said;
}

/// The requests that are needed where the order does not count, counted id by id.
std::size_t requestsBetween(const Said& before, const Said& after, bool hasVersion) {
  const std::map<int, int> held{before.policies.begin(), before.policies.end()};
  const std::map<int, int> wanted{after.policies.begin(), after.policies.end()};
  std::size_t changes = 0;
  for (const auto& [id, value] : held)
    if (!wanted.contains(id) || wanted.at(id) != value) ++changes;
  for (const auto& [id, value] : wanted)
    if (!held.contains(id) || held.at(id) != value) ++changes;
  // An empty store does not tell its version.
  const bool setsVersion = hasVersion && (held.empty() || before.version != after.version);
  return std::min(changes, 1 + wanted.size()) + (setsVersion ? 1 : 0);
}

TEST_F(StoreApply, leads_from_any_store_to_any_document_with_the_requests_that_it_takes) {
  std::mt19937 random{21};
  for (const std::string store : {"asm", "pb"}) {
    Said before;
    for (int i = 0; i < 25; ++i) {
      const Said after = randomSaid(random);
      tool.writeText("random.json", documentOf(after));
      const bool withOrder = i % 2 == 1;
      const std::vector<std::string> order =
          withOrder ? std::vector<std::string>{"--order"} : std::vector<std::string>{};
      auto arguments = order;
      arguments.insert(arguments.end(), {"--yes", "--json"});
      const auto run = apply(store, "random.json", arguments);
      ASSERT_EQ(run.exitCode, 0) << run;
      const auto carriedOut = nlohmann::json::parse(run.out)["carriedOut"].get<std::size_t>();
      if (!withOrder) {
        EXPECT_EQ(carriedOut, requestsBetween(before, after, store == "asm")) << run;
      }
      auto verify = std::vector<std::string>{"store", "verify", store, "random.json"};
      verify.insert(verify.end(), order.begin(), order.end());
      EXPECT_EQ(tool.run(verify).exitCode, 0);
      before = after;
    }
  }
}

TEST_F(StoreApply, empties_the_store_where_that_takes_fewer_requests) {
  ASSERT_EQ(tool.run({"store", "load", "pb", samplePath("laptop-r5.bin")}).exitCode, 0);
  EXPECT_EQ(apply("pb", "before.json", {"--yes"}),
            done("4 requests to send: reset, add 120, add 7, add 10\n"
                 "The Policy Builder store holds what before.json says now (3 policies).\n"));
}

TEST_F(StoreApply, counts_many_requests) {
  fill("balance-profile", "before.json");
  const auto run = apply("balance-profile", samplePath("fleet-r5.bin"), {"--yes"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(run.out.starts_with("401 requests to send: reset, 400 adds\n")) << run.out;
  EXPECT_EQ(tool.run({"store", "verify", "balance-profile", samplePath("fleet-r5.bin"), "--order"}).exitCode, 0);
}

TEST_F(StoreApply, sets_a_version_that_an_empty_store_does_not_tell) {
  EXPECT_EQ(apply("asm", "laptop.json", {"--dry-run"}),
            done("would send 4 requests: add 10, add 120, add 140, set version 3.41\n"));
  EXPECT_EQ(apply("pb", "laptop.json", {"--dry-run"}), done("would send 3 requests: add 10, add 120, add 140\n"));
}

TEST_F(StoreApply, takes_away_what_no_document_can_say) {
  addUnconditionalPolicy(tool, 0);
  EXPECT_EQ(apply("asm", "laptop.json", {"--yes"}).exitCode, 0);
  EXPECT_EQ(tool.run({"store", "verify", "asm", "laptop.json"}).exitCode, 0);
}

TEST_F(StoreApply, asks_nobody_where_there_is_no_terminal) {
  const auto expected = failed(
      "vqs: nobody can be asked whether to change the store, nothing was sent: use --yes to change it or --dry-run to "
      "see the requests\n");
  EXPECT_EQ(apply("asm", "laptop.json", {}), expected);
  EXPECT_EQ(apply("asm", "laptop.json", {"--json"}), expected);
  EXPECT_EQ(apply("asm", "laptop.json", {"-o", "plan.txt"}), expected);
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done("The Asm store is empty.\n"));
}

TEST_F(StoreApply, sends_nothing_of_a_file_with_errors) {
  fill("asm", "before.json");
  const auto before = held("asm");
  tool.writeText("wrong.json", R"({ "policies": [{ "id": 1, "when": [{ "Power Source": 77 }] }] })");
  const auto run = apply("asm", "wrong.json", {"--yes"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("wrong.json:1:54: error P0012: ")) << run.err;
  EXPECT_TRUE(run.err.ends_with("\nvqs: wrong.json was not applied, nothing was sent: 1 error in 1 policy\n"))
      << run.err;
  tool.writeText("twice.json", R"({ "policies": [{ "id": 1, "when": [{ "Power Source": 0 }] },
                                                 { "id": 1, "when": [{ "Power Source": 1 }] }] })");
  EXPECT_EQ(apply("asm", "twice.json", {"--yes"}).exitCode, 1);
  EXPECT_EQ(apply("asm", "missing.json", {"--yes"}),
            failed("vqs: missing.json cannot be read: No such file or directory\n"));
  EXPECT_EQ(held("asm"), before);
}

TEST_F(StoreApply, sends_nothing_of_more_policies_than_the_store_takes) {
  std::string text = R"({ "policies": [)";
  for (int id = 1; id <= 401; ++id)
    text += R"({ "id": )" + std::to_string(id) + R"(, "when": [{ "Power Source": 0 }] },)";
  tool.writeText("many.json", text + "] }");
  const auto run = apply("asm", "many.json", {"--yes"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.err.find(" error P0032: "), std::string::npos) << run.err;
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done("The Asm store is empty.\n"));
}

TEST_F(StoreApply, lets_pass_with_a_warning_what_the_catalogues_do_not_know) {
  tool.writeText("unknown.json", R"({ "policies": [{ "id": 1, "when": [{ "#77": { "op": 1, "value": 5 } }] }] })");
  EXPECT_EQ(apply("pb", "unknown.json", {"--yes"}).exitCode, 1);
  const auto run = apply("pb", "unknown.json", {"--yes", "--allow-unknown"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_NE(run.err.find(": warning P0021: "), std::string::npos) << run.err;
  EXPECT_EQ(tool.run({"store", "verify", "pb", "unknown.json"}).exitCode, 0);
}

TEST_F(StoreApply, json) {
  fill("asm", "before.json");
  const std::string plan = R"("requests": [
    {
      "request": "delete",
      "id": 7
    },
    {
      "request": "delete",
      "id": 120
    },
    {
      "request": "add",
      "id": 120,
      "name": "Hot chassis"
    },
    {
      "request": "add",
      "id": 140,
      "name": "Dark room"
    },
    {
      "request": "setVersion",
      "version": "3.41"
    }
  ],
  "outOfOrder": [],
)";
  EXPECT_EQ(
      apply("asm", "laptop.json", {"--dry-run", "--json"}),
      done("{\n  \"schema\": \"vqs/1\",\n  \"store\": \"asm\",\n  \"file\": \"laptop.json\",\n  \"dryRun\": true,\n  " +
           plan + "  \"carriedOut\": 0,\n  \"failure\": null,\n  \"difference\": null\n}\n"));
  const auto run = apply("asm", "laptop.json", {"--yes", "--json", "-o", "applied.json"});
  EXPECT_EQ(run, done(""));
  const auto text = tool.readText("applied.json");
  EXPECT_NE(text.find(plan), std::string::npos) << text;
  const auto json = nlohmann::json::parse(text);
  EXPECT_EQ(json["dryRun"], false);
  EXPECT_EQ(json["carriedOut"], 5);
  EXPECT_EQ(json["failure"], nullptr);
  EXPECT_EQ(json["difference"]["same"], true);
}

TEST_F(StoreApply, json_names_what_will_be_out_of_order) {
  fill("pb", "turned.json");
  const auto json = nlohmann::json::parse(apply("pb", "laptop.json", {"--dry-run", "--json"}).out);
  EXPECT_EQ(json["outOfOrder"], (nlohmann::json{{{"id", 10}, {"name", "Quiet on battery"}}}));
  EXPECT_EQ(json["requests"], nlohmann::json::array());
}

}  // namespace
}  // namespace test
