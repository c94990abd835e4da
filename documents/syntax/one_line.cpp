// SPDX-License-Identifier: Apache-2.0
#include "documents/syntax/one_line.h"

#include <algorithm>

namespace documents {
namespace {

struct Brackets {
  std::string_view opening;
  std::string_view closing;
  std::string_view empty;
};

constexpr Brackets kList{.opening = "[", .closing = "]", .empty = "[]"};
constexpr Brackets kObject{.opening = "{ ", .closing = " }", .empty = "{}"};
constexpr std::string_view kBetween = ", ";
constexpr std::string_view kBehindName = ": ";

constexpr const Brackets& bracketsOf(const Node& node) { return node.kind == NodeKind::kArray ? kList : kObject; }
constexpr bool isContainer(const Node& node) { return node.kind == NodeKind::kArray || node.kind == NodeKind::kObject; }

/// Takes a text's width from what is left; false when it does not fit.
bool take(std::size_t& left, std::string_view text) {
  // Characters have four bytes at most, so that long texts need no counting.
  if (text.size() / 4 > left) return false;
  const std::size_t width = widthOf(text);
  if (width > left) return false;
  left -= width;
  return true;
}

bool takeValue(const Tree& tree, const Node& node, std::size_t& left) {
  if (!isContainer(node)) return take(left, tree.slice(node.span));
  const Brackets& brackets = bracketsOf(node);
  if (node.count == 0) return take(left, brackets.empty);
  if (!take(left, brackets.opening) || !take(left, brackets.closing)) return false;
  for (NodeId id = node.firstChild; id != kNoNode; id = tree.node(id).next) {
    const Node& child = tree.node(id);
    if (id != node.firstChild && !take(left, kBetween)) return false;
    if (child.name.length != 0 && !(take(left, tree.slice(child.name)) && take(left, kBehindName))) return false;
    if (!takeValue(tree, child, left)) return false;
  }
  return true;
}

}  // namespace

std::size_t widthOf(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

void putOneLine(const Tree& tree, const Node& node, std::string& text) {
  if (!isContainer(node)) {
    text += tree.slice(node.span);
    return;
  }
  const Brackets& brackets = bracketsOf(node);
  if (node.count == 0) {
    text += brackets.empty;
    return;
  }
  text += brackets.opening;
  for (NodeId id = node.firstChild; id != kNoNode; id = tree.node(id).next) {
    const Node& child = tree.node(id);
    if (id != node.firstChild) text += kBetween;
    if (child.name.length != 0) text.append(tree.slice(child.name)) += kBehindName;
    putOneLine(tree, child, text);
  }
  text += brackets.closing;
}

bool isWithin(const Tree& tree, const Node& node, std::size_t width) { return takeValue(tree, node, width); }

}  // namespace documents
