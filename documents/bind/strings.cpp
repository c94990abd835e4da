// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/strings.h"

#include <optional>

namespace documents {
namespace {

/// What stands between quotes, where both are there.
std::optional<std::string_view> betweenQuotes(std::string_view written) {
  if (written.size() < 2 || written.front() != '"' || written.back() != '"') return std::nullopt;
  return written.substr(1, written.size() - 2);
}

}  // namespace

Characters Characters::ofString(const Tree& tree, const Node& node) {
  const auto plain = betweenQuotes(tree.slice(node.span));
  if (plain && !node.hasEscapes) return Characters{*plain};
  return Characters{stringOf(tree, node)};
}

Characters Characters::ofName(const Tree& tree, const Node& node) {
  const auto plain = betweenQuotes(tree.slice(node.name));
  if (plain && !node.hasEscapesInName) return Characters{*plain};
  return Characters{nameOf(tree, node)};
}

}  // namespace documents
