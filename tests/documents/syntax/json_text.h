// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "documents/syntax/tree.h"

namespace documents {

/// A tree without blanks and comments, names, strings and numbers as they were written.
std::string compact(const Tree& tree);

/// That of a text; the findings' sentences if there are any.
std::string compact(std::string_view text);

/// Every finding of a text: "line:column+length Pcode sentence" each in a line of its own, suggestions behind it: "->
/// the text that is written instead", "?" for "->" when it is not certain.
std::string findingsOf(std::string_view text);

}  // namespace documents
