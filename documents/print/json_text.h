// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace documents {

/// Appends a string of a document in its quotes: control characters as escapes, a surrogate without its partner as
/// \uD800 to \uDFFF.
void appendQuoted(std::string& text, std::u16string_view units);
/// A description: bytes that are no UTF-8 as \udc80 to \udcff.
void appendQuoted(std::string& text, std::string_view bytes);

}  // namespace documents
