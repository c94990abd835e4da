// SPDX-License-Identifier: Apache-2.0
#include "documents/bind/members.h"

#include <algorithm>

#include "documents/bind/strings.h"
#include "documents/text/quote.h"
#include "documents/vocabulary/fold.h"
#include "documents/vocabulary/nearest.h"

namespace documents {

MemberNames::MemberNames(Context& context, NodeId object, const Path& path, std::string_view what,
                         std::span<const std::string_view> names)
    : context_(context), path_(path), what_(what), names_(names) {
  for (NodeId id = context.node(object).firstChild; id != kNoNode; id = context.node(id).next) {
    const auto characters = Characters::ofName(context.tree(), context.node(id));
    const auto found = std::ranges::find(names, characters.view());
    if (found != names.end()) taken_ |= std::uint32_t{1} << (found - names.begin());
  }
}

void MemberNames::sayUnknown(const Node& node, std::string_view written) {
  context_.say(Rule::kUnknownMember, node.name, path_, [&] {
    std::vector<std::string_view> missing;
    for (std::size_t i = 0; i < names_.size(); ++i)
      if ((taken_ >> i & 1) == 0) missing.push_back(names_[i]);
    const std::string sentence = quote(written) + " is no member of " + std::string(what_);
    const auto nearest = nearestOf(missing, written);
    if (!nearest.empty()) return Words{sentence + perhaps(nearest), rewrites(node.name, nearest)};
    return Words{sentence + ": " + alternatives({names_.begin(), names_.end()}) + " is expected"};
  });
}

std::optional<std::size_t> MemberNames::indexOf(NodeId member) {
  const Node& node = context_.node(member);
  const auto characters = Characters::ofName(context_.tree(), node);
  const auto written = characters.view();
  const auto isMeant = [written](std::string_view name) { return compareFolded(name, written) == 0; };
  const auto found = std::ranges::find_if(names_, isMeant);
  const auto index = static_cast<std::size_t>(found - names_.begin());
  if (found != names_.end() && *found == written) return index;
  // Where the right name is there too, this one can mean anything.
  const std::uint32_t bit = found == names_.end() ? 0 : std::uint32_t{1} << index;
  if (bit == 0 || (taken_ & bit) != 0) {
    sayUnknown(node, written);
    return std::nullopt;
  }
  taken_ |= bit;
  context_.say(Rule::kOtherCase, node.name, path_, [&] {
    return Words{quote(written) + " is written " + quote(*found), {rewriteName(node.name, *found, true)}};
  });
  return index;
}

}  // namespace documents
