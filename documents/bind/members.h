// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

#include "documents/bind/number.h"

namespace documents {

/// A member that an object may have, and what it does to the target.
template <class Target>
struct Member {
  std::string_view name;
  void (*bind)(Context& context, NodeId id, const Path& path, Target& target);
};

/// Finds the rows that members of an object are for. A wrong name is a finding.
class MemberNames {
 public:
  /// `what` is the object: "a policy".
  MemberNames(Context& context, NodeId object, const Path& path, std::string_view what,
              std::span<const std::string_view> names);

  /// The row of a member; nothing for an unknown one.
  std::optional<std::size_t> indexOf(NodeId member);
  /// Rows that there are, bit n for row n.
  [[nodiscard]] std::uint32_t taken() const { return taken_; }

 private:
  void sayUnknown(const Node& node, std::string_view written);

  Context& context_;
  const Path& path_;
  std::string_view what_;
  std::span<const std::string_view> names_;
  std::uint32_t taken_ = 0;
};

/// Which of an object's members there are, bit n for row n, after each was bound.
template <class Target, std::size_t N>
std::uint32_t bindMembers(Context& context, NodeId object, const Path& path, std::string_view what,
                          const Member<Target> (&rows)[N], Target& target) {
  std::array<std::string_view, N> texts;
  for (std::size_t i = 0; i < N; ++i) texts[i] = rows[i].name;
  MemberNames names{context, object, path, what, texts};
  for (NodeId id = context.node(object).firstChild; id != kNoNode; id = context.node(id).next)
    if (const auto index = names.indexOf(id)) rows[*index].bind(context, id, path.member(rows[*index].name), target);
  return names.taken();
}

/// A member that is a number and nothing else: the field is a record's, and its width the limit.
template <auto field, class Target>
void bindField(Context& context, NodeId id, const Path& path, Target& target) {
  using Number = std::remove_reference_t<decltype(target.*field)>;
  const auto value = bindNumber(context, id, path, {.name = path.name(), .most = std::numeric_limits<Number>::max()});
  if (value) target.*field = static_cast<Number>(*value);
}

}  // namespace documents
