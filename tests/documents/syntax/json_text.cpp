// SPDX-License-Identifier: Apache-2.0
#include "tests/documents/syntax/json_text.h"

namespace documents {
namespace {

void append(const Tree& tree, NodeId id, std::string& text) {
  const Node& node = tree.node(id);
  if (node.name.length != 0) text.append(tree.slice(node.name)) += ':';
  if (node.kind != NodeKind::kArray && node.kind != NodeKind::kObject) {
    text += tree.slice(node.span);
    return;
  }
  const bool isList = node.kind == NodeKind::kArray;
  text += isList ? '[' : '{';
  for (NodeId child = node.firstChild; child != kNoNode; child = tree.node(child).next) {
    if (child != node.firstChild) text += ',';
    append(tree, child, text);
  }
  text += isList ? ']' : '}';
}

}  // namespace

std::string compact(const Tree& tree) {
  std::string text;
  if (!tree.nodes.empty()) append(tree, 0, text);
  return text;
}

std::string compact(std::string_view text) {
  Findings findings;
  const Tree tree = parse(text, findings);
  return findings.empty() ? compact(tree) : findingsOf(text);
}

std::string findingsOf(std::string_view text) {
  Findings findings;
  parse(text, findings);
  const LineTable lines{text};
  std::string all;
  for (const Finding& finding : findings) {
    const Position place = lines.positionOf(finding.span.offset);
    all += std::to_string(place.line) + ':' + std::to_string(place.column) + '+' + std::to_string(finding.span.length) +
           ' ' + codeOf(finding.rule) + ' ' + finding.sentence;
    for (const Suggestion& suggestion : finding.suggestions)
      all += (suggestion.isCertain ? " -> " : " ? ") + suggestion.edits.at(0).replacement;
    all += '\n';
  }
  return all;
}

}  // namespace documents
