// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

#include "documents/syntax/tree.h"

namespace documents {

/// The most characters of a line that holds a whole list or object.
inline constexpr std::size_t kLineWidth = 120;
/// The outer levels, the document, its policies and each of them, never stand on one line.
inline constexpr std::size_t kSpreadLevels = 3;

/// The canonical layout of a tree that was read without a finding:
///
/// - Two spaces a level, LF, one at the end too, no byte order mark, no trailing comma. Names, numbers and strings stay
///   as they are written, members in their order.
/// - A list or an object stands on one line, `[1, 2]` and `{ "a": 1, "b": 2 }`, when it is not one of the outer levels,
///   is no list of nothing but objects, holds no comment, and ends within kLineWidth with the comma behind it.
///   Otherwise each of its members has a line of its own. Empty ones are `[]` and `{}`.
/// - Comments keep their order. One on the line of what it follows stays behind it and behind its comma, one before
///   something stays before it, and a block between a name and its value stays there. A line comment there goes to a
///   line before the member.
/// - Between members one empty line is kept; after an opening and before a closing bracket none.
///
/// What was laid out is left alone when it is laid out again.
std::string layOut(const Tree& tree);

}  // namespace documents
