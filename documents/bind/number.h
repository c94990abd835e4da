// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "documents/bind/context.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {

/// The value of a number that is written as digits with or without a minus, which is how a document has to; nothing for
/// one with a fraction or an exponent. What is too large for any field comes back as something too large.
std::optional<std::int64_t> wholeNumber(std::string_view written);

/// The digits of a number whose fraction or exponent says nothing: 1000 for "1e3"; nothing where there are none, or too
/// many.
std::optional<std::string> digitsOf(std::string_view written);

/// Where a number goes: a field of a record, or what a condition or an action is about.
struct NumberField {
  /// the member's; not looked at where there is a word
  std::string_view name;
  std::int64_t least = 0;
  std::int64_t most = std::numeric_limits<std::uint32_t>::max();
  /// the one whose value it is
  const Word* word = nullptr;

  /// `"flag0"`, `the value of "SPL"`
  [[nodiscard]] std::string subject() const;
  /// `a number from 0 to 255 is expected`
  [[nodiscard]] std::string expected() const;
};

/// The number that a value is, if the field can hold it.
std::optional<std::int64_t> bindNumber(Context& context, NodeId id, const Path& path, const NumberField& field);

/// "a string"
std::string_view nameOfKind(NodeKind kind);

/// Says that something is of another kind than it has to be: `"when" cannot be a string: a list is expected`.
void refuseKind(Context& context, NodeId id, const Path& path, std::string_view subject, std::string_view expected);

}  // namespace documents
