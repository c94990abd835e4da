// SPDX-License-Identifier: Apache-2.0
#include "documents/syntax/duplicates.h"

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>

namespace documents {
namespace {

/// Up to here every pair is compared, which is faster than sorting.
constexpr std::uint32_t kFew = 12;

std::string_view rawName(const Tree& tree, NodeId id) { return tree.slice(tree.node(id).name); }

bool hasFewAndPlain(const Tree& tree, const Node& object) {
  if (object.count > kFew) return false;
  for (NodeId id = object.firstChild; id != kNoNode; id = tree.node(id).next)
    if (tree.node(id).hasEscapesInName) return false;
  return true;
}

std::vector<Duplicate> comparePairs(const Tree& tree, const Node& object) {
  std::vector<Duplicate> duplicates;
  for (NodeId id = object.firstChild; id != kNoNode; id = tree.node(id).next) {
    NodeId first = object.firstChild;
    while (first != id && rawName(tree, first) != rawName(tree, id)) first = tree.node(first).next;
    if (first != id) duplicates.push_back({.first = first, .again = id});
  }
  return duplicates;
}

struct Named {
  std::string_view name;
  NodeId id;
};

std::vector<Duplicate> compareSorted(const Tree& tree, const Node& object) {
  std::deque<std::string> unescaped;
  std::vector<Named> members;
  members.reserve(object.count);
  for (NodeId id = object.firstChild; id != kNoNode; id = tree.node(id).next) {
    const std::string_view raw = rawName(tree, id);
    if (tree.node(id).hasEscapesInName || !raw.starts_with('"'))
      members.push_back({.name = unescaped.emplace_back(nameOf(tree, tree.node(id))), .id = id});
    else
      members.push_back({.name = raw.substr(1, raw.size() - 2), .id = id});
  }
  std::ranges::sort(members, [](const Named& a, const Named& b) {
    const int order = a.name.compare(b.name);
    return order != 0 ? order < 0 : a.id < b.id;
  });
  std::vector<Duplicate> duplicates;
  const Named* first = members.data();
  for (const Named& member : members) {
    if (member.name != first->name) first = &member;
    if (&member != first) duplicates.push_back({.first = first->id, .again = member.id});
  }
  return duplicates;
}

}  // namespace

std::vector<Duplicate> duplicatesOf(const Tree& tree, NodeId object) {
  const Node& node = tree.node(object);
  if (node.count < 2) return {};
  return hasFewAndPlain(tree, node) ? comparePairs(tree, node) : compareSorted(tree, node);
}

}  // namespace documents
