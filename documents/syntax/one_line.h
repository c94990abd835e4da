// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "documents/syntax/tree.h"

namespace documents {

/// How many characters wide a text is.
std::size_t widthOf(std::string_view text);

/// Appends a value on one line, without the name that it has as a member, and without comments.
void putOneLine(const Tree& tree, const Node& node, std::string& text);

/// True when a value on one line is no wider. What does not fit is not looked at to its end.
bool isWithin(const Tree& tree, const Node& node, std::size_t width);

}  // namespace documents
