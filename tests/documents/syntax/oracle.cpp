// SPDX-License-Identifier: Apache-2.0
#include "tests/documents/syntax/oracle.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <nlohmann/json.hpp>
#include "documents/syntax/tree.h"

namespace documents {
namespace {

using Json = nlohmann::json;

Json parsed(std::string_view text) { return Json::parse(text, nullptr, false, true); }

/// A tree as a value of the other reader, from the texts of its numbers and strings.
Json valueOf(const Tree& tree, const Node& node) {
  switch (node.kind) {
    case NodeKind::kString:
      return stringOf(tree, node);
    case NodeKind::kArray:
    case NodeKind::kObject:
      break;
    default:
      return parsed(tree.slice(node.span));
  }
  Json json = node.kind == NodeKind::kArray ? Json::array() : Json::object();
  for (NodeId id = node.firstChild; id != kNoNode; id = tree.node(id).next) {
    const Node& child = tree.node(id);
    if (node.kind == NodeKind::kArray)
      json.push_back(valueOf(tree, child));
    else
      json[nameOf(tree, child)] = valueOf(tree, child);
  }
  return json;
}

bool hasSurrogate(std::string_view text) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i)
    if (text[i] == '\xED' && static_cast<unsigned char>(text[i + 1]) >= 0xA0) return true;
  return false;
}

/// What only a document may have: a surrogate without a partner, or a number that a double cannot hold.
bool goesBeyondJson(const Tree& tree) {
  return std::ranges::any_of(tree.nodes, [&](const Node& node) {
    if (node.kind == NodeKind::kNumber && std::isinf(std::strtod(std::string{tree.slice(node.span)}.c_str(), nullptr)))
      return true;
    return hasSurrogate(nameOf(tree, node)) || (node.kind == NodeKind::kString && hasSurrogate(stringOf(tree, node)));
  });
}

/// Takes a string or a comment from a text, where one begins; otherwise a byte.
std::size_t lengthOfPiece(std::string_view text) {
  if (text.starts_with("/*")) return std::min(text.size(), text.find("*/", 2)) + 2;
  if (text.starts_with("//")) return std::min(text.size(), text.find_first_of("\r\n"));
  if (!text.starts_with('"')) return 1;
  std::size_t end = 1;
  while (end < text.size() && text[end] != '"') end += text[end] == '\\' ? 2 : 1;
  return end + 1;
}

/// The text without commas that stand between a value and a closing bracket.
std::string withoutTrailingCommas(std::string_view text) {
  std::string result;
  // Where in the result the last piece is that is neither blank nor comment, and what stood before it.
  std::size_t last = std::string::npos;
  char beforeLast = '\0';
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, lengthOfPiece(text));
    text.remove_prefix(piece.size());
    const bool isNothing = piece.starts_with('/')
                               ? piece.size() > 1
                               : std::string_view{" \t\r\n"}.find(piece[0]) != std::string_view::npos;
    const char previous = last == std::string::npos ? '\0' : result[last];
    const bool isClosing = piece == "]" || piece == "}";
    if (isClosing && previous == ',' && std::string_view{"[{,:"}.find(beforeLast) == std::string_view::npos)
      result[last] = ' ';
    if (!isNothing) {
      beforeLast = previous;
      last = result.size();
    }
    result += piece;
  }
  return result;
}

bool isOnly(const Findings& findings, std::initializer_list<Rule> rules) {
  return std::ranges::all_of(
      findings, [&](const Finding& finding) { return std::ranges::find(rules, finding.rule) != rules.end(); });
}

}  // namespace

std::string differenceToOracle(std::string_view text) {
  Findings findings;
  const Tree tree = parse(text, findings);
  const Json expected = parsed(withoutTrailingCommas(text));
  if (findings.empty()) {
    if (expected.is_discarded()) return goesBeyondJson(tree) ? "" : "it is no JSON";
    return valueOf(tree, tree.node(0)) == expected ? "" : "it is " + expected.dump();
  }
  // The other reader does not look into comments.
  const bool isOurs = isOnly(findings, {Rule::kDuplicateMember, Rule::kTooDeep, Rule::kTooLarge, Rule::kBrokenUtf8});
  return expected.is_discarded() || isOurs ? "" : "it is " + expected.dump() + " and no error: " + findings[0].sentence;
}

bool agreesOnValue(std::string_view text) {
  Findings findings;
  const Tree tree = parse(text, findings);
  const Json expected = parsed(text);
  return findings.empty() && !expected.is_discarded() && valueOf(tree, tree.node(0)) == expected;
}

}  // namespace documents
