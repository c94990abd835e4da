// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/findings/finding.h"

namespace documents {

enum class NodeKind : std::uint8_t { kNull, kBoolean, kNumber, kString, kArray, kObject };

/// A value of a document, by its place in Tree::nodes. 0 is the document's own value.
using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = 0xFFFFFFFF;

struct Node {
  NodeKind kind;
  /// a string that is not its own characters: it has escapes, or bytes that are no UTF-8
  bool hasEscapes = false;
  /// the same of the name
  bool hasEscapesInName = false;
  /// what stands there could not be read, and a finding says so: nothing more is to be said about its value
  bool isBroken = false;
  /// elements or members
  std::uint32_t count = 0;
  NodeId firstChild = kNoNode;
  NodeId next = kNoNode;
  /// all of the value: with the quotes of a string, the brackets of a list
  Span span{};
  /// with its quotes; of length 0 unless the value is a member of an object. Where a finding says so, quotes are
  /// missing.
  Span name{};
};

/// A comment, with its slashes and stars.
struct Comment {
  Span span;
  bool isBlock;
};

/// What a document says as JSON. It keeps a view of the text.
struct Tree {
  std::string_view text;
  /// empty when there is no value at all
  std::vector<Node> nodes{};
  std::vector<Comment> comments{};

  [[nodiscard]] const Node& node(NodeId id) const { return nodes[id]; }
  [[nodiscard]] std::string_view slice(Span span) const { return text.substr(span.offset, span.length); }
};

/// The most bytes and the most levels of a document that is read.
inline constexpr std::size_t kMostBytes = std::size_t{16} << 20;
inline constexpr std::size_t kMostLevels = 32;
/// The most findings that are made of one document; the last one says that there are more.
inline constexpr std::size_t kMostFindings = 1000;

/// Reads JSON with comments and trailing commas. It goes on after an error where it can: what could be read is in the
/// tree. Values of nodes are not looked at beyond their form.
Tree parse(std::string_view text, Findings& findings);

/// The value of a string or a name: escapes replaced. A surrogate without a partner is kept, as the three bytes that
/// UTF-8 would have for it.
std::string stringOf(const Tree& tree, const Node& node);
std::string nameOf(const Tree& tree, const Node& node);

}  // namespace documents
