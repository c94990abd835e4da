// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/version.h"

#include "documents/bind/number.h"
#include "documents/bind/strings.h"
#include "documents/text/quote.h"

namespace documents {
namespace {

constexpr std::string_view kExpected = "two numbers from 0 to 65535 with a point between them are expected";

struct Version {
  std::uint16_t first;
  std::uint16_t second;
};

std::optional<std::uint16_t> numberOf(std::string_view digits) {
  if (digits.starts_with('-')) return std::nullopt;
  const auto number = wholeNumber(digits);
  if (!number || *number > std::numeric_limits<std::uint16_t>::max()) return std::nullopt;
  return static_cast<std::uint16_t>(*number);
}

std::optional<Version> versionOf(std::string_view written) {
  const auto point = written.find('.');
  if (point == std::string_view::npos) return std::nullopt;
  const auto first = numberOf(written.substr(0, point));
  const auto second = numberOf(written.substr(point + 1));
  if (!first || !second) return std::nullopt;
  return Version{*first, *second};
}

void refuseVersionKind(Context& context, const Node& node, const Path& path) {
  if (node.isBroken) return context.refuseBroken();
  context.refuse(Rule::kWrongKind, node.span, path, [&] {
    Words words{"\"version\" cannot be " + std::string(nameOfKind(node.kind)) +
                ": a string such as \"3.41\" is expected"};
    const auto written = context.tree().slice(node.span);
    if (versionOf(written)) words.suggestions.push_back(rewrite(node.span, quote(written), true));
    return words;
  });
}

}  // namespace

void bindVersion(Context& context, NodeId id, const Path& path, PolicySet& set) {
  const Node& node = context.node(id);
  if (node.isBroken || node.kind != NodeKind::kString) return refuseVersionKind(context, node, path);
  const auto characters = Characters::ofString(context.tree(), node);
  const auto version = versionOf(characters.view());
  if (!version) {
    return context.refuse(Rule::kMalformedVersion, node.span, path, [&] {
      return Words{quote(characters.view()) + " is no version: " + std::string(kExpected)};
    });
  }
  set.version1 = version->first;
  set.version2 = version->second;
}

}  // namespace documents
