// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <iterator>

#include "tests/tool/lsp/editor.h"

namespace test {
namespace {

constexpr char kDocument[] = R"({
  "policies": [
    {
      "id": 10,
      "name": "Quiet",
      "when": [
        { "Power Source": "DC Power" }
      ],
      "do": [
        { "SPL": 15000 }
      ]
    }
  ]
}
)";

/// The labels of proposals.
std::vector<std::string> labelsOf(const Json& items) {
  std::vector<std::string> labels;
  for (const Json& item : items) labels.push_back(item.at("label"));
  return labels;
}

TEST(Initialize, says_what_the_server_can_do) {
  const Editor editor;
  const Json& result = editor.answer.at("result");
  EXPECT_EQ(result.at("serverInfo"), (Json{{"name", "vqs"}, {"version", VQS_TOOL_VERSION}}));
  const Json expected = Json::parse(R"({
    "positionEncoding": "utf-16",
    "textDocumentSync": { "openClose": true, "change": 2 },
    "completionProvider": { "triggerCharacters": ["\"", ":", "{", "["] },
    "hoverProvider": true,
    "definitionProvider": true,
    "documentSymbolProvider": true,
    "workspaceSymbolProvider": true,
    "documentFormattingProvider": true
  })");
  EXPECT_EQ(result.at("capabilities"), expected);
}

TEST(Initialize, offers_code_actions_to_editors_that_know_them) {
  const Editor editor{{{"textDocument", {{"codeAction", {{"codeActionLiteralSupport", Json::object()}}}}}}};
  EXPECT_EQ(editor.answer.at("result").at("capabilities").at("codeActionProvider"),
            Json::parse(R"({ "codeActionKinds": ["quickfix", "source.fixAll"] })"));
}

TEST(Initialize, counts_in_units_of_utf_16_whatever_else_an_editor_can) {
  const Editor editor{{{"general", {{"positionEncodings", {"utf-8", "utf-32", "utf-16"}}}}}};
  EXPECT_EQ(editor.answer.at("result").at("capabilities").at("positionEncoding"), "utf-16");
}

TEST(DidOpen, is_answered_with_the_findings) {
  Editor editor;
  EXPECT_EQ(editor.open(kDocument), Json::array());
  const Json diagnostics = editor.open(R"({ "policies": [ { "id": 1, "when": [ { "Power Source": 77 } ] } ] })");
  ASSERT_EQ(diagnostics.size(), 1U);
  EXPECT_EQ(diagnostics[0].at("code"), "P0012");
  EXPECT_EQ(diagnostics[0].at("severity"), 1);
  EXPECT_EQ(diagnostics[0].at("source"), "vqs");
  EXPECT_EQ(diagnostics[0].at("range"), between(at(0, 55), at(0, 57)));
  EXPECT_EQ(editor.sent.back().at("params").at("version"), 1);
}

TEST(DidChange, is_answered_with_the_findings_of_the_new_text) {
  Editor editor;
  editor.open(kDocument);
  const Json changes = Json::array({{{"range", between(at(6, 26), at(6, 36))}, {"text", "\"Solar\""}}});
  const Json diagnostics = editor.change(2, changes);
  ASSERT_EQ(diagnostics.size(), 1U);
  EXPECT_EQ(diagnostics[0].at("range"), between(at(6, 26), at(6, 33)));
  EXPECT_EQ(editor.sent.back().at("params").at("version"), 2);
  EXPECT_EQ(editor.change(3, Json::array({{{"text", kDocument}}})), Json::array());
}

TEST(DidChange, that_makes_no_sense_changes_nothing) {
  Editor editor;
  editor.open(kDocument);
  const auto before = editor.sent.size();
  for (const char* change : {R"([{}])", R"([{ "text": 5 }])", R"({ "text": "" })", R"(5)",
                             R"([{ "text": "" }, { "text": "", "range": {} }])",
                             R"([{ "text": "", "range": { "start": { "line": 1, "character": 0 },
                                                          "end": { "line": 0, "character": 0 } } }])"}) {
    editor.notify("textDocument/didChange",
                  {{"textDocument", {{"uri", kUri}, {"version", 2}}}, {"contentChanges", Json::parse(change)}});
    EXPECT_EQ(editor.sent.size(), before) << change;
  }
  EXPECT_EQ(editor.ask("textDocument/documentSymbol").size(), 1U);
}

TEST(DidClose, takes_the_findings_back) {
  Editor editor;
  editor.open("{");
  editor.notify("textDocument/didClose", {{"textDocument", {{"uri", kUri}}}});
  EXPECT_EQ(editor.sent.back().at("method"), "textDocument/publishDiagnostics");
  EXPECT_EQ(editor.sent.back().at("params"), (Json{{"uri", kUri}, {"diagnostics", Json::array()}}));
  const Json answer = editor.request("textDocument/hover", {{"textDocument", {{"uri", kUri}}}, {"position", at(0, 0)}});
  EXPECT_EQ(answer.at("error").at("code"), -32602);
}

TEST(Completion, replaces_what_stands_between_the_quotes) {
  Editor editor;
  editor.open(kDocument);
  const Json items = editor.ask("textDocument/completion", at(6, 29));
  EXPECT_EQ(labelsOf(items), (std::vector<std::string>{"AC Power", "DC Power"}));
  EXPECT_EQ(items[0].at("textEdit"), (Json{{"range", between(at(6, 27), at(6, 35))}, {"newText", "AC Power"}}));
  EXPECT_EQ(items[0].at("kind"), 20);
  EXPECT_EQ(items[0].at("insertTextFormat"), 1);
}

TEST(Completion, has_stops_for_editors_that_know_them_only) {
  const Json knowing = {{"textDocument", {{"completion", {{"completionItem", {{"snippetSupport", true}}}}}}}};
  for (const auto& [capabilities, format, text] :
       {std::tuple{Json::object(), 1, R"("version": "1.0")"}, std::tuple{knowing, 2, R"("version": "${1:1.0}")"}}) {
    Editor editor{capabilities};
    editor.open("{  }");
    const Json items = editor.ask("textDocument/completion", at(0, 2));
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[1].at("insertTextFormat"), format);
    EXPECT_EQ(items[1].at("textEdit").at("newText"), text);
  }
}

TEST(Completion, explains_in_the_markup_that_an_editor_knows) {
  const Json knowing = Json::parse(
      R"({ "textDocument": { "completion": { "completionItem": { "documentationFormat": ["markdown"] } } } })");
  for (const auto& [capabilities, kind, text] :
       {std::tuple{Json::object(), "plaintext",
                   "Comparison 2: \"op\" may be left out.\n\n- \"AC Power\" (0)\n- \"DC Power\" (1)"},
        std::tuple{knowing, "markdown",
                   "Comparison 2: \"op\" may be left out.\n\n- \"AC Power\" (0)\n- \"DC Power\" (1)"}}) {
    Editor editor{capabilities};
    editor.open(kDocument);
    const Json items = editor.ask("textDocument/completion", at(6, 12));
    EXPECT_EQ(items[0].at("label"), "Power Source");
    EXPECT_EQ(items[0].at("documentation"), (Json{{"kind", kind}, {"value", text}}));
  }
}

TEST(Hover, is_text_in_the_markup_that_an_editor_knows) {
  const Json knowing =
      Json::parse(R"({ "textDocument": { "hover": { "contentFormat": ["markdown", "plaintext"] } } })");
  for (const auto& [capabilities, kind, text] :
       {std::tuple{Json::object(), "plaintext", "SPL: action 2, 0 to 4294967295, in mW"},
        std::tuple{knowing, "markdown", "**SPL**: action 2, 0 to 4294967295, in mW"}}) {
    Editor editor{capabilities};
    editor.open(kDocument);
    const Json hover = editor.ask("textDocument/hover", at(9, 12));
    EXPECT_EQ(hover.at("contents"), (Json{{"kind", kind}, {"value", text}}));
    EXPECT_EQ(hover.at("range"), between(at(9, 10), at(9, 15)));
  }
}

TEST(Hover, is_null_where_there_is_nothing_to_say) {
  Editor editor;
  editor.open(kDocument);
  EXPECT_EQ(editor.ask("textDocument/hover", at(4, 17)), Json{});
}

TEST(Formatting, is_one_edit_or_none) {
  Editor editor;
  editor.open(kDocument);
  EXPECT_EQ(editor.ask("textDocument/formatting"), Json::array());
  editor.change(2, Json::array({{{"range", between(at(9, 8), at(9, 10))}, {"text", "{"}}}));
  const Json edits = editor.ask("textDocument/formatting");
  ASSERT_EQ(edits.size(), 1U);
  EXPECT_EQ(edits[0], (Json{{"range", between(at(9, 9), at(9, 9))}, {"newText", " "}}));
}

TEST(Formatting, leaves_alone_what_cannot_be_read) {
  Editor editor;
  editor.open(R"({ "policies": [ )");
  EXPECT_EQ(editor.ask("textDocument/formatting"), Json::array());
}

TEST(Definition, is_the_first_policy_of_an_id) {
  Editor editor;
  editor.open("{ // as 8\n\"policies\": [ { \"id\": 7 },\n{ \"id\": 8 }, { \"id\": 7 } ] }");
  const auto placeOf = [](unsigned line, unsigned character, unsigned end) {
    return Json{{"uri", kUri}, {"range", between(at(line, character), at(line, end))}};
  };
  EXPECT_EQ(editor.ask("textDocument/definition", at(2, 22)), placeOf(1, 22, 23));
  EXPECT_EQ(editor.ask("textDocument/definition", at(0, 9)), placeOf(2, 8, 9));
  EXPECT_EQ(editor.ask("textDocument/definition", at(1, 3)), Json{});
}

TEST(DocumentSymbol, is_a_tree_for_editors_that_know_trees) {
  Editor editor{
      Json::parse(R"({ "textDocument": { "documentSymbol": { "hierarchicalDocumentSymbolSupport": true } } })")};
  editor.open(kDocument);
  const Json symbols = editor.ask("textDocument/documentSymbol");
  ASSERT_EQ(symbols.size(), 1U);
  EXPECT_EQ(symbols[0].at("name"), "10 Quiet");
  EXPECT_EQ(symbols[0].at("range"), between(at(2, 4), at(11, 5)));
  EXPECT_EQ(symbols[0].at("selectionRange"), between(at(3, 12), at(3, 14)));
  ASSERT_EQ(symbols[0].at("children").size(), 2U);
  EXPECT_EQ(symbols[0].at("children")[0].at("name"), "Power Source");
  EXPECT_EQ(symbols[0].at("children")[0].at("detail"), "\"DC Power\"");
  EXPECT_EQ(symbols[0].at("children")[0].at("range"), between(at(6, 8), at(6, 38)));
  EXPECT_EQ(symbols[0].at("children")[1].at("selectionRange"), between(at(9, 10), at(9, 15)));
}

TEST(DocumentSymbol, is_a_list_of_the_policies_otherwise) {
  Editor editor;
  editor.open(kDocument);
  EXPECT_EQ(editor.ask("textDocument/documentSymbol"),
            (Json::array({{{"name", "10 Quiet"},
                           {"kind", 19},
                           {"location", {{"uri", kUri}, {"range", between(at(2, 4), at(11, 5))}}}}})));
}

TEST(WorkspaceSymbol, finds_policies_by_id_and_name) {
  Editor editor;
  editor.open(kDocument);
  for (const char* query : {"10", "qui", "", "10 Q"})
    EXPECT_EQ(editor.request("workspace/symbol", {{"query", query}}).at("result").size(), 1U) << query;
  EXPECT_EQ(editor.request("workspace/symbol", {{"query", "loud"}}).at("result"), Json::array());
}

Json actionsIn(Editor& editor, const Json& range, const Json& context) {
  return editor
      .request("textDocument/codeAction", {{"textDocument", {{"uri", kUri}}}, {"range", range}, {"context", context}})
      .at("result");
}

TEST(CodeAction, mends_a_finding) {
  Editor editor;
  const Json diagnostics = editor.open(R"({ "policies": [ { "id": 1, "when": [ { "power source": 1 } ] } ] })");
  ASSERT_EQ(diagnostics.size(), 1U);
  const Json actions = actionsIn(editor, between(at(0, 41), at(0, 41)), {{"diagnostics", Json::array()}});
  ASSERT_EQ(actions.size(), 2U);
  EXPECT_EQ(actions[0].at("title"), "Write \"Power Source\"");
  EXPECT_EQ(actions[0].at("kind"), "quickfix");
  EXPECT_EQ(actions[0].at("isPreferred"), true);
  EXPECT_EQ(actions[0].at("diagnostics"), diagnostics);
  EXPECT_EQ(
      actions[0].at("edit"),
      (Json{{"changes",
             {{kUri, Json::array({{{"range", between(at(0, 39), at(0, 53))}, {"newText", "\"Power Source\""}}})}}}}));
  EXPECT_EQ(actions[1].at("kind"), "source.fixAll");
  EXPECT_EQ(actionsIn(editor, between(at(0, 0), at(0, 1)), {{"only", {"quickfix"}}}), Json::array());
}

TEST(CodeAction, is_of_the_kinds_that_the_editor_wants) {
  Editor editor{Json::parse(R"({ "workspace": { "workspaceEdit": { "documentChanges": true } } })")};
  editor.open(R"({ "policies": [ { "id": 1, "when": [ { "power source": 1, } ] } ] })");
  const Json whole = between(at(0, 0), at(0, 70));
  EXPECT_EQ(actionsIn(editor, whole, {{"only", {"quickfix"}}}).size(), 1U);
  EXPECT_EQ(actionsIn(editor, whole, {{"only", {"refactor", "sour"}}}), Json::array());
  for (const char* kind : {"source", "source.fixAll"}) {
    const Json actions = actionsIn(editor, whole, {{"only", {kind}}});
    ASSERT_EQ(actions.size(), 1U) << kind;
    const Json& change = actions[0].at("edit").at("documentChanges").at(0);
    EXPECT_EQ(change.at("textDocument"), (Json{{"uri", kUri}, {"version", 1}}));
    EXPECT_EQ(change.at("edits"), Json::array({{{"range", between(at(0, 40), at(0, 47))}, {"newText", "Power S"}}}));
  }
}

TEST(Diagnostics, show_the_first_of_two_to_editors_that_know_related_places) {
  Editor editor{Json::parse(R"({ "textDocument": { "publishDiagnostics": { "relatedInformation": true } } })")};
  const Json diagnostics = editor.open(
      R"({ "policies": [ { "id": 7, "when": [ { "Lid State": 0 } ] }, { "id": 7, "when": [ { "Lid State": 1 } ] } ] })");
  ASSERT_EQ(diagnostics.size(), 1U);
  EXPECT_EQ(diagnostics[0].at("code"), "P0033");
  EXPECT_EQ(diagnostics[0].at("relatedInformation"),
            (Json::array({{{"location", {{"uri", kUri}, {"range", between(at(0, 24), at(0, 25))}}},
                           {"message", "the first policy with this id"}}})));
}

/// A document of as many policies as there may be, on 8400 lines.
std::string largeDocument() {
  std::string text = "{\n  \"policies\": [\n";
  for (int id = 1; id <= 400; ++id) {
    text += "    {\n      \"id\": " + std::to_string(id) + ",\n      \"name\": \"Policy " + std::to_string(id) +
            "\",\n      \"when\": [\n";
    for (int i = 0; i < 10; ++i) text += "        { \"Skin Temperature\": { \"op\": 3, \"value\": 4600 } },\n";
    text +=
        "      ],\n      \"do\": [\n        { \"SPL\": 15000 },\n        { \"Fan Mode\": \"Manual\" }\n      ]\n    "
        "},\n";
  }
  return text + "  ]\n}\n";
}

TEST(DidChange, of_a_document_of_400_policies_is_answered_at_once) {
  using Clock = std::chrono::steady_clock;
  Editor editor;
  EXPECT_EQ(editor.open(largeDocument()), Json::array());
  std::vector<Clock::duration> times;
  for (int i = 0; i < 9; ++i) {
    const auto start = Clock::now();
    EXPECT_EQ(editor.change(2 + i, Json::array({{{"range", between(at(3, 12), at(3, 12))}, {"text", ""}}})),
              Json::array());
    times.push_back(Clock::now() - start);
  }
  // The sanitizers and other tests at the same time have their share.
  EXPECT_LT(std::ranges::min(times), std::chrono::milliseconds{200});
}

TEST(DidChange, at_400_places_is_answered_at_once) {
  Editor editor;
  editor.open(largeDocument());
  Json changes = Json::array();
  // From the last policy to the first: each has 20 lines, and its name in the third.
  for (unsigned policy = 400; policy-- > 0;)
    changes.push_back({{"range", between(at(4 + 20 * policy, 15), at(4 + 20 * policy, 21))}, {"text", "Rule"}});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(editor.change(2, changes), Json::array());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{2});
  EXPECT_EQ(editor.request("workspace/symbol", {{"query", "rule"}}).at("result").size(), 400U);
}

}  // namespace
}  // namespace test
