// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "documents/documents.h"
#include "documents/syntax/tree.h"
#include "documents/text/utf.h"
#include "fuzz/check.h"

namespace {

using documents::Findings;
using documents::kNoNode;
using documents::Node;
using documents::NodeId;
using documents::NodeKind;
using documents::Span;
using documents::Tree;

bool isInside(const Span& inner, const Span& outer) {
  return inner.offset >= outer.offset && inner.end() <= outer.end();
}

void checkFindings(std::string_view text, const Findings& findings) {
  check(findings.size() <= documents::kMostFindings);
  for (const auto& finding : findings) {
    check(finding.span.offset <= text.size() && finding.span.length <= text.size() - finding.span.offset);
    check(documents::validUtf8(finding.sentence) == finding.sentence.size());
    check(std::ranges::none_of(finding.sentence, [](char byte) { return byte >= 0 && byte < ' '; }));
  }
}

/// Members lie inside of what holds them, one behind the other, and every node has its place.
void checkTree(const Tree& tree) {
  std::size_t children = 0;
  for (const Node& node : tree.nodes) {
    check(isInside(node.span, {.offset = 0, .length = tree.text.size()}));
    std::uint32_t count = 0;
    std::size_t end = node.span.offset;
    for (NodeId id = node.firstChild; id != kNoNode; id = tree.node(id).next) {
      const Node& child = tree.node(id);
      check(isInside(child.span, node.span) && child.span.offset >= end);
      check((child.name.length != 0) == (node.kind == NodeKind::kObject));
      check(child.name.length == 0 || (child.name.offset >= end && child.name.end() <= child.span.offset));
      end = child.span.end();
      ++count;
    }
    check(count == node.count);
    children += count;
  }
  check(tree.nodes.empty() || children + 1 == tree.nodes.size());
  for (std::size_t i = 1; i < tree.comments.size(); ++i)
    check(tree.comments[i - 1].span.end() <= tree.comments[i].span.offset);
}

void checkStrings(const Tree& tree) {
  for (const Node& node : tree.nodes) {
    const std::string value = node.kind == NodeKind::kString ? stringOf(tree, node) : nameOf(tree, node);
    check(documents::toUtf8(documents::toUtf16(value)) == value || node.isBroken);
  }
}

/// What a layout must not change: everything but blanks, comments and commas.
std::string contentOf(const Tree& tree) {
  std::string content;
  for (const Node& node : tree.nodes) {
    const bool isContainer = node.kind == NodeKind::kArray || node.kind == NodeKind::kObject;
    content += tree.slice(node.name);
    content += isContainer ? (node.kind == NodeKind::kArray ? "[" : "{") + std::to_string(node.count)
                           : std::string{tree.slice(node.span)};
    content += '\n';
  }
  return content;
}

/// The comments without what a layout may change in them: blanks and line ends.
std::string commentsOf(const Tree& tree) {
  std::string comments;
  for (const auto& comment : tree.comments) comments.append(tree.slice(comment.span)) += '\n';
  std::erase_if(comments, [](char byte) { return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n'; });
  return comments;
}

void checkLayout(const Tree& tree) {
  const auto formatted = documents::formatDocument(tree.text);
  check(formatted.text.has_value() && formatted.findings.empty());
  const std::string first = formatted.text.value_or("");
  Findings findings;
  const Tree again = documents::parse(first, findings);
  check(findings.empty());
  check(contentOf(again) == contentOf(tree));
  check(commentsOf(again) == commentsOf(tree));
  check(documents::formatDocument(first).text == first);
}

void checkPlaces(std::string_view text, const Findings& findings) {
  const documents::LineTable lines{text};
  for (const auto& finding : findings) {
    const auto place = lines.positionOf(finding.span.offset);
    check(place.line >= 1 && place.line <= lines.count() && place.column >= 1);
    check(lines.offsetOf(place.line, place.unit) <= text.size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A copy of exactly this size, so that a step beyond it shows.
  const std::string copy(reinterpret_cast<const char*>(data), size);
  const std::string_view text = copy;
  Findings findings;
  const Tree tree = documents::parse(text, findings);
  checkFindings(text, findings);
  checkTree(tree);
  checkStrings(tree);
  checkPlaces(text, findings);
  check(findings.empty() || hasErrors(findings));
  if (findings.empty()) {
    check(!tree.nodes.empty());
    checkLayout(tree);
    check(documents::applyCertainFixes(text, findings) == text);
  } else {
    check(!documents::formatDocument(text).text);
    Findings rest;
    documents::parse(documents::applyCertainFixes(text, findings), rest);
  }
  return 0;
}
