// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>

#include "tests/tool/lsp/editor.h"
#include "tool/system/paths.h"

namespace test {
namespace {

using tool::lsp::MessageReader;
using tool::lsp::Server;

/// What a server sends to bytes, and whether it ended as it should.
struct Conversation {
  std::vector<Json> sent;
  bool isOrderly;
};

Conversation converse(const std::string& bytes) {
  const tool::File file{std::tmpfile()};
  EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file.get()), bytes.size());
  EXPECT_EQ(std::fseek(file.get(), 0, SEEK_SET), 0);
  Conversation conversation;
  MessageReader reader{file.get()};
  Server server{{}, [&](const Json& message) { conversation.sent.push_back(message); }};
  conversation.isOrderly = serve(reader, server);
  return conversation;
}

std::string framedAll(const std::vector<std::string>& bodies) {
  std::string bytes;
  for (const auto& body : bodies) bytes += tool::lsp::framed(body);
  return bytes;
}

constexpr char kInitialize[] = R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"capabilities":{}}})";
constexpr char kShutDown[] = R"({"jsonrpc":"2.0","id":2,"method":"shutdown"})";
constexpr char kExit[] = R"({"jsonrpc":"2.0","method":"exit"})";

int codeOf(const Json& message) { return message.at("error").at("code"); }

TEST(Serve, ends_orderly_with_shutdown_and_exit_only) {
  EXPECT_TRUE(converse(framedAll({kInitialize, kShutDown, kExit})).isOrderly);
  EXPECT_FALSE(converse(framedAll({kInitialize, kExit})).isOrderly);
  EXPECT_FALSE(converse(framedAll({kInitialize, kShutDown})).isOrderly);
  EXPECT_FALSE(converse(framedAll({kExit})).isOrderly);
  EXPECT_FALSE(converse("").isOrderly);
}

TEST(Serve, reads_nothing_behind_exit) {
  EXPECT_EQ(converse(framedAll({kInitialize, kShutDown, kExit, kInitialize})).sent.size(), 2U);
}

TEST(Serve, refuses_requests_before_initialize) {
  const auto [sent, isOrderly] = converse(
      framedAll({R"({"jsonrpc":"2.0","id":"a","method":"shutdown"})", R"({"jsonrpc":"2.0","id":7,"method":"no/such"})",
                 R"({"jsonrpc":"2.0","method":"textDocument/didOpen","params":{}})", kInitialize}));
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(codeOf(sent[0]), -32002);
  EXPECT_EQ(sent[0].at("id"), "a");
  EXPECT_EQ(codeOf(sent[1]), -32002);
  EXPECT_EQ(sent[1].at("id"), 7);
  EXPECT_TRUE(sent[2].contains("result"));
}

TEST(Serve, refuses_a_second_initialize_and_everything_behind_shutdown) {
  const auto [sent, isOrderly] =
      converse(framedAll({kInitialize, kInitialize, kShutDown, kShutDown, kInitialize, kExit}));
  ASSERT_EQ(sent.size(), 5U);
  EXPECT_EQ(codeOf(sent[1]), -32600);
  EXPECT_EQ(sent[2].at("result"), Json{});
  EXPECT_EQ(codeOf(sent[3]), -32600);
  EXPECT_EQ(codeOf(sent[4]), -32600);
  EXPECT_TRUE(isOrderly);
}

TEST(Serve, goes_on_behind_messages_that_make_no_sense) {
  const std::vector<std::pair<std::string, int>> cases = {
      {"", -32700},
      {"{", -32700},
      {"\xFF", -32700},
      {std::string(100, '[') + std::string(100, ']'), -32700},
      {"5", -32600},
      {"[]", -32600},
      {"{}", -32600},
      {R"({"jsonrpc":"1.0","id":1,"method":"initialize"})", -32600},
      {R"({"jsonrpc":"2.0"})", -32600},
      {R"({"jsonrpc":"2.0","id":5})", -32600},
      {R"({"jsonrpc":"2.0","id":5,"method":5})", -32600},
      {R"({"jsonrpc":"2.0","id":null,"method":"shutdown"})", -32600},
      {R"({"jsonrpc":"2.0","id":[1],"method":"shutdown"})", -32600},
      {R"({"jsonrpc":"2.0","id":1.5,"method":"shutdown"})", -32600},
      {R"({"jsonrpc":"2.0","id":5,"method":"no/such"})", -32601},
      {R"({"jsonrpc":"2.0","id":5,"method":"$/no"})", -32601},
      {R"({"jsonrpc":"2.0","id":5,"method":"exit"})", -32601},
      {R"({"jsonrpc":"2.0","id":5,"method":"textDocument/hover"})", -32602},
      {R"({"jsonrpc":"2.0","id":5,"method":"textDocument/hover","params":[1]})", -32602},
      {R"({"jsonrpc":"2.0","id":5,"method":"textDocument/hover","params":{"textDocument":{"uri":5}}})", -32602},
      {R"({"jsonrpc":"2.0","id":5,"method":"textDocument/hover","params":{"textDocument":{"uri":"a"}}})", -32602},
      {R"({"jsonrpc":"2.0","id":5,"method":"workspace/symbol","params":{"query":5}})", -32602},
  };
  for (const auto& [body, code] : cases) {
    const auto [sent, isOrderly] = converse(framedAll({kInitialize, body, kShutDown, kExit}));
    ASSERT_EQ(sent.size(), 3U) << body;
    EXPECT_EQ(codeOf(sent[1]), code) << body;
    EXPECT_TRUE(isOrderly) << body;
  }
}

TEST(Serve, says_nothing_to_notifications_and_answers) {
  for (const std::string body :
       {R"({"jsonrpc":"2.0","method":"no/such"})", R"({"jsonrpc":"2.0","method":"$/cancelRequest","params":{"id":1}})",
        R"({"jsonrpc":"2.0","method":"$/setTrace","params":{"value":"verbose"}})",
        R"({"jsonrpc":"2.0","method":"initialized","params":{}})", R"({"jsonrpc":"2.0","method":"shutdown"})",
        R"({"jsonrpc":"2.0","method":"textDocument/didSave","params":{"textDocument":{"uri":"a"}}})",
        R"({"jsonrpc":"2.0","method":"textDocument/didOpen"})",
        R"({"jsonrpc":"2.0","method":"textDocument/didOpen","params":{"textDocument":{"uri":"a"}}})",
        R"({"jsonrpc":"2.0","method":"textDocument/didChange","params":{"textDocument":{"uri":"a","version":1}}})",
        R"({"jsonrpc":"2.0","method":"textDocument/didClose","params":{"textDocument":{"uri":"a"}}})",
        R"({"jsonrpc":"2.0","id":5,"result":null})", R"({"jsonrpc":"2.0","id":5,"error":{"code":1,"message":""}})"}) {
    const auto [sent, isOrderly] = converse(framedAll({kInitialize, body, kShutDown, kExit}));
    EXPECT_EQ(sent.size(), 2U) << body;
    EXPECT_TRUE(isOrderly) << body;
  }
}

TEST(Serve, ends_where_there_is_no_header) {
  const auto [sent, isOrderly] = converse(framedAll({kInitialize}) + "Content-Length: x\r\n\r\n" + framedAll({kExit}));
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_EQ(codeOf(sent[1]), -32700);
  EXPECT_EQ(sent[1].at("id"), Json{});
  EXPECT_FALSE(isOrderly);
}

TEST(Serve, goes_on_behind_a_message_that_is_too_long) {
  const auto [sent, isOrderly] =
      converse(framedAll({kInitialize, std::string((std::size_t{32} << 20) + 1, ' '), kShutDown, kExit}));
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(codeOf(sent[1]), -32600);
  EXPECT_TRUE(isOrderly);
}

TEST(Serve, answers_every_request_about_documents_cut_anywhere) {
  const std::string text = R"({ // 7
  "policies": [ { "id": 7, "name": "a", "when": [ { "App State": { "op": 2, "value": ["Foreground", "Fu"] } } ],
  "do": [ { "SPL": 1 }, { "fan mode": "Manual", } ], "texts": [ "b", { "text": "c" } ] } ] })";
  for (std::size_t length = 0; length <= text.size(); ++length) {
    Editor editor{Json::parse(R"({ "textDocument": { "publishDiagnostics": { "relatedInformation": true } } })")};
    editor.open(text.substr(0, length));
    for (const char* method : {"textDocument/completion", "textDocument/hover", "textDocument/definition"})
      for (unsigned line = 0; line < 3; ++line)
        for (unsigned character = 5; character < 120; character += 38) editor.ask(method, at(line, character));
    for (const char* method : {"textDocument/documentSymbol", "textDocument/formatting"}) editor.ask(method);
    const Json answer = editor.request(
        "textDocument/codeAction",
        {{"textDocument", {{"uri", kUri}}}, {"range", between(at(0, 0), at(9, 0))}, {"context", Json::object()}});
    ASSERT_TRUE(answer.at("result").is_array()) << length;
  }
}

TEST(Serve, takes_random_bytes_for_messages) {
  std::mt19937 random{7};
  const std::string kAlphabet =
      "{}[]\",:0123456789\\u/*\n \x01\xC3\xFF"
      "abcjsonrpcidmethod";
  for (int i = 0; i < 2000; ++i) {
    std::string bytes = framedAll({kInitialize});
    const std::size_t length = random() % 200;
    std::string body;
    for (std::size_t j = 0; j < length; ++j) body += kAlphabet[random() % kAlphabet.size()];
    bytes += random() % 2 == 0 ? tool::lsp::framed(body) : body;
    const auto [sent, isOrderly] = converse(bytes);
    EXPECT_FALSE(isOrderly);
    ASSERT_GE(sent.size(), length == 0 ? 1U : 2U);
  }
}

}  // namespace
}  // namespace test
