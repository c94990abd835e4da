// SPDX-License-Identifier: Apache-2.0
#include "documents/documents.h"

#include <nlohmann/json.hpp>

#include "bench/families.h"
#include "bench/harness/require.h"
#include "documents/syntax/tree.h"

namespace bench {
namespace {

/// A document in its canonical layout, with as many policies as a binary can have: sixteen conditions, three actions
/// and two texts each, half a megabyte together.
std::string largeDocument() {
  std::string text = "{\n  \"version\": \"3.41\",\n  \"policies\": [\n";
  for (int id = 1; id <= 400; ++id) {
    text += "    {\n      \"id\": " + std::to_string(id) + ",\n      \"name\": \"Quiet on battery " +
            std::to_string(id) + "\",\n      \"description\": \"low power, low noise\",\n      \"when\": [\n";
    for (int i = 0; i < 8; ++i) {
      text += "        { \"Skin Temperature\": { \"op\": 3, \"value\": " + std::to_string(4000 + 10 * i) + " } },\n";
      text += "        { \"Power Source\": \"DC Power\" }";
      text += i < 7 ? ",\n" : "\n";
    }
    text +=
        "      ],\n      \"do\": [\n        { \"SPL\": 15000 },\n        { \"Fan Mode\": \"Manual\" },\n"
        "        { \"Fan Table Index\": { \"value\": 3, \"option1\": 1 } }\n      ],\n"
        "      \"texts\": [\"teams.exe\", { \"text\": \"obs64.exe\", \"flag\": 1 }],\n      \"flag0\": 1\n    }";
    text += id < 400 ? ",\n" : "\n";
  }
  return text + "  ]\n}\n";
}

std::string sizeOf(const std::string& text) { return std::to_string(text.size()) + " bytes"; }

}  // namespace

void measureDocuments(Report& report) {
  const std::string text = largeDocument();
  const auto parse = [&] {
    documents::Findings findings;
    const auto tree = documents::parse(text, findings);
    require(findings.empty(), "a document without findings");
    keep(tree.nodes.data());
  };
  const auto peer = [&] {
    const auto json = nlohmann::json::parse(text);
    keep(&json);
  };
  const auto format = [&] {
    const auto result = documents::formatDocument(text);
    require(result.text == text, "a document that is laid out already");
    keep(result.text->data());
  };
  report.addRatio(Item::kParseDocument, compare(parse, peer));
  report.add(Item::kFormatDocument, compare(format, format).first / 1e6, sizeOf(text));
}

}  // namespace bench
