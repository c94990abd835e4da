// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "tests/tool/driver_client.h"
#include "tests/tool/store_documents.h"

namespace test {
namespace {

/// Something befalls a request of the run: "fail:5", "fail-from:5", "interrupt:5".
RunOptions withFault(const std::string& fault) {
  auto options = withSteadyDriver();
  options.environment["LD_LIBRARY_PATH"] = VQS_COUNTING_LIBRARY;
  options.environment["VQS_REQUEST_FAULT"] = fault;
  return options;
}

/// What a store holds: the value of the first condition by the policy's id, in no order.
using Content = std::map<int, int>;

class StoreApplyFailure : public testing::Test {
 protected:
  void SetUp() override {
    tool.writeText("laptop.json", kLaptop);
    tool.writeText("before.json", kBefore);
  }

  ToolRun apply(const std::string& file, const RunOptions& options, const std::vector<std::string>& more = {}) const {
    std::vector<std::string> arguments = {"store", "apply", store, file, "--yes"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tool.run(arguments, options);
  }

  [[nodiscard]] Content content() const {
    Content content;
    const auto json = nlohmann::json::parse(tool.run({"store", "list", store, "--json"}).out);
    for (const auto& policy : json["policies"])
      content[policy["id"]] = policy["conditions"].empty() ? -1 : policy["conditions"][0]["value"].get<int>();
    return content;
  }
  /// The version as a saved file has it; an empty store tells none.
  [[nodiscard]] std::string version() const {
    if (tool.run({"store", "save", store, "saved.bin"}).exitCode != 0) return "";
    const auto file = tool.folder().path("saved.bin");
    const auto bytes = readFile(file);
    return std::to_string(bytes.at(4)) + "." + std::to_string(bytes.at(6));
  }

  /// What a message has to say about the store as it is, next to laptop.json; typed apart from the tool.
  [[nodiscard]] std::string state(const std::string& title, bool hasVersion) const {
    const Content wanted = {{10, 1}, {120, 4600}, {140, 0}};
    const Content now = content();
    std::vector<int> missing;
    std::vector<int> different;
    std::vector<int> surplus;
    for (const auto& [id, value] : wanted) {
      if (!now.contains(id))
        missing.push_back(id);
      else if (now.at(id) != value)
        different.push_back(id);
    }
    for (const auto& [id, value] : now)
      if (!wanted.contains(id)) surplus.push_back(id);
    std::string text;
    const auto say = [&](const std::vector<int>& ids, const std::string& one, const std::string& several) {
      if (ids.empty()) return;
      text += text.empty() ? "" : ", ";
      for (std::size_t i = 0; i < ids.size(); ++i)
        text += (i == 0 ? "" : i + 1 == ids.size() ? " and " : ", ") + std::to_string(ids[i]);
      text += ids.size() == 1 ? one : several;
    };
    say(missing, " is missing", " are missing");
    say(different, " differs", " differ");
    say(surplus, " is not in laptop.json", " are not in laptop.json");
    if (hasVersion && version() != "3.41") text += (text.empty() ? "" : ", ") + ("its version is " + version());
    if (text.empty()) return "the " + title + " store holds what laptop.json says now";
    return "the " + title + " store holds " + std::to_string(now.size()) + (now.size() == 1 ? " policy" : " policies") +
           " now: " + text;
  }

  void putBack() const {
    ASSERT_EQ(tool.run({"store", "reset", store}).exitCode, 0);
    ASSERT_EQ(apply("before.json", withSteadyDriver()).exitCode, 0);
  }

  /// How many requests a run takes to which nothing befalls.
  [[nodiscard]] int countRequests() const {
    putBack();
    auto options = withFault("none");
    options.environment["VQS_COUNTED_REQUESTS"] = tool.path("requests");
    EXPECT_EQ(apply("laptop.json", options).exitCode, 0);
    return std::stoi(tool.readText("requests"));
  }

  /// Looks at what a run that did not get to its end says of the store as it is. How many requests it has carried out.
  int expectTrueMessage(const std::string& message, const std::string& title, bool hasVersion) const {
    const std::string middle = " requests carried out, ";
    const auto at = message.find(middle);
    EXPECT_EQ(message.substr(at + middle.size(), state(title, hasVersion).size()), state(title, hasVersion)) << message;
    // The same command goes on, and sends as much as was announced.
    const std::string end = "; the same command sends the rest, ";
    const auto rest = message.find(end);
    const auto number = rest + end.size();
    const std::string announced =
        rest == message.npos ? "The " : message.substr(number, message.find(' ', number) - number) + " request";
    const auto next = tool.run({"store", "apply", store, "laptop.json", "--yes"});
    EXPECT_EQ(next.exitCode, 0) << next;
    EXPECT_TRUE(next.out.starts_with(announced)) << message << next;
    return message[message.rfind("; ", at) + 2] - '0';
  }

  /// Brings the store back to before.json again and again, and lets something befall request after request.
  void expectTrueMessages(const std::string& kind, const std::string& title, bool hasVersion) const {
    std::set<int> carriedOut;
    const int count = countRequests();
    for (int n = 1; n <= count; ++n) {
      SCOPED_TRACE(n);
      putBack();
      const Content before = content();
      const auto run = apply("laptop.json", withFault(kind + ":" + std::to_string(n)));
      if (run.exitCode == 0) {
        // A session can do without its first request, and what has been sent is read again when that fails.
        EXPECT_EQ(run.err, "");
        EXPECT_TRUE(n == 1 || n > count / 2);
      } else if (run.err.find(" requests carried out, ") == run.err.npos) {
        // Before anything was sent.
        EXPECT_TRUE(run.exitCode == 2 || run.exitCode == 3) << run;
        EXPECT_EQ(run.out, "") << run;
        EXPECT_EQ(content(), before) << run;
        continue;
      } else {
        EXPECT_EQ(run.exitCode, 2) << run;
        carriedOut.insert(expectTrueMessage(run.err, title, hasVersion));
      }
      EXPECT_EQ(tool.run({"store", "verify", store, "laptop.json"}).exitCode, 0);
    }
    EXPECT_EQ(carriedOut, (hasVersion ? std::set<int>{0, 1, 2, 3, 4} : std::set<int>{0, 1, 2, 3}));
  }

  std::string store = "asm";
  Tool tool;
};

TEST_F(StoreApplyFailure, of_every_request_says_what_is_in_the_asm_store) { expectTrueMessages("fail", "Asm", true); }

TEST_F(StoreApplyFailure, of_every_request_says_what_is_in_a_store_without_a_version) {
  store = "pb";
  expectTrueMessages("fail", "Policy Builder", false);
}

TEST_F(StoreApplyFailure, interruption_says_what_is_in_the_store) { expectTrueMessages("interrupt", "Asm", true); }

TEST_F(StoreApplyFailure, message) {
  ASSERT_EQ(apply("before.json", withSteadyDriver()).exitCode, 0);
  // The session is opened with one request; the store is counted, read and asked for its version in six more.
  EXPECT_EQ(apply("laptop.json", withFault("fail:10")),
            (ToolRun{.exitCode = 2,
                     .out = "5 requests to send: delete 7, delete 120, add 120, add 140, set version 3.41\n",
                     .err = "vqs: adding 120 \"Hot chassis\" failed: the driver refused the request; 2 of 5 requests "
                            "carried out, the Asm store holds 1 policy now: 120 and 140 are missing, its version is "
                            "3.40; the same command sends the rest, 3 requests\n"}));
}

TEST_F(StoreApplyFailure, message_of_an_interruption) {
  ASSERT_EQ(apply("before.json", withSteadyDriver()).exitCode, 0);
  // What is under way is carried out.
  EXPECT_EQ(apply("laptop.json", withFault("interrupt:10")),
            (ToolRun{.exitCode = 2,
                     .out = "5 requests to send: delete 7, delete 120, add 120, add 140, set version 3.41\n",
                     .err = "vqs: interrupted; 3 of 5 requests carried out, the Asm store holds 2 policies now: 140 is "
                            "missing, its version is 3.40; the same command sends the rest, 2 requests\n"}));
}

TEST_F(StoreApplyFailure, driver_that_is_gone) {
  ASSERT_EQ(apply("before.json", withSteadyDriver()).exitCode, 0);
  EXPECT_EQ(apply("laptop.json", withFault("fail-from:10")),
            (ToolRun{.exitCode = 3,
                     .out = "5 requests to send: delete 7, delete 120, add 120, add 140, set version 3.41\n",
                     .err = "vqs: adding 120 \"Hot chassis\" failed: the driver refused the request; 2 of 5 requests "
                            "carried out, what the Asm store holds now cannot be read\n"}));
  ASSERT_EQ(apply("laptop.json", withSteadyDriver()).exitCode, 0);
  ASSERT_EQ(apply("before.json", withSteadyDriver()).exitCode, 0);
  // All was sent, and cannot be verified.
  const auto run = apply("laptop.json", withFault("fail-from:13"));
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.err,
            "vqs: the driver does not answer any more; 5 of 5 requests carried out, what the Asm store holds now "
            "cannot be read\n");
}

TEST_F(StoreApplyFailure, json) {
  ASSERT_EQ(apply("before.json", withSteadyDriver()).exitCode, 0);
  const auto run = apply("laptop.json", withFault("fail:10"), {"--json"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_TRUE(run.err.starts_with("vqs: adding 120 \"Hot chassis\" failed: ")) << run.err;
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["requests"].size(), 5U);
  EXPECT_EQ(json["carriedOut"], 2);
  EXPECT_EQ(json["failure"], "adding 120 \"Hot chassis\" failed: the driver refused the request");
  EXPECT_EQ(json["difference"]["same"], false);
  EXPECT_EQ(json["difference"]["policies"].size(), 2U);
  const auto gone = apply("laptop.json", withFault("fail-from:10"), {"--json", "-o", "gone.json"});
  EXPECT_EQ(gone.exitCode, 3);
  EXPECT_EQ(nlohmann::json::parse(tool.readText("gone.json"))["difference"], nullptr);
}

TEST_F(StoreApplyFailure, no_driver) {
  RunOptions options;
  options.environment["VEXOQTF_SIMULATOR_STATE"] = tool.path("laptop.json");
  EXPECT_EQ(apply("laptop.json", options).exitCode, 3);
  EXPECT_EQ(tool.run({"store", "verify", "asm", "laptop.json"}, options).exitCode, 3);
}

class StoreApplyQuestion : public StoreApplyFailure {
 protected:
  ToolRun answer(const std::string& keys, const std::function<void()>& meanwhile = {}) const {
    return tool.runOn(
        {.lines = 24, .columns = 80, .awaited = "[y/N] ", .times = 1, .keys = keys, .meanwhile = meanwhile},
        {"store", "apply", "asm", "laptop.json"});
  }
};

const std::string kQuestion =
    "4 requests to send: add 10, add 120, add 140, set version 3.41\r\n"
    "Change the Asm store? [y/N] ";

TEST_F(StoreApplyQuestion, yes) {
  EXPECT_EQ(answer("y\n"),
            done(kQuestion + "y\r\nThe Asm store holds what laptop.json says now (3 policies, version 3.41).\r\n"));
  EXPECT_EQ(tool.run({"store", "verify", "asm", "laptop.json", "--order"}).exitCode, 0);
}

TEST_F(StoreApplyQuestion, anything_else_is_no) {
  for (const std::string keys : {"n", "", "nay", "yesterday"}) {
    const auto run = answer(keys + "\n");
    EXPECT_EQ(run, (ToolRun{.exitCode = 1, .out = kQuestion + keys + "\r\nNothing was sent.\r\n", .err = ""}));
  }
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done("The Asm store is empty.\n"));
}

TEST_F(StoreApplyQuestion, end_of_input_is_no) {
  const auto run = answer("\x04");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.ends_with("\r\nNothing was sent.\r\n")) << run.out;
}

TEST_F(StoreApplyQuestion, interruption_ends_it) {
  EXPECT_EQ(answer("\x03").exitCode, 128 + 2);
  EXPECT_EQ(tool.run({"store", "list", "asm"}), done("The Asm store is empty.\n"));
}

TEST_F(StoreApplyQuestion, does_not_hold_for_a_store_that_has_changed_meanwhile) {
  const auto run = answer("y\n", [&] { addUnconditionalPolicy(tool, 77); });
  EXPECT_EQ(
      run, (ToolRun{.exitCode = 2,
                    .out = kQuestion + "y\r\nvqs: the Asm store has changed meanwhile, nothing was sent: try again\r\n",
                    .err = ""}));
  EXPECT_EQ(content().size(), 1U);
}

TEST_F(StoreApplyQuestion, is_not_asked_when_there_is_nothing_to_do) {
  ASSERT_EQ(apply("laptop.json", withSteadyDriver()).exitCode, 0);
  EXPECT_EQ(answer(""), done("The Asm store holds what laptop.json says already, nothing to send.\r\n"));
}

}  // namespace
}  // namespace test
