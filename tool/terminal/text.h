// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include <vqs/base.h>

namespace tool {

/// UTF-8 of the units up to the first zero; a surrogate without its partner becomes U+FFFD.
std::string fromUtf16(std::span<const VqsChar16> units);

/// UTF-8 of the bytes up to the first zero, each taken for the character of its number.
std::string fromLatin1(std::span<const char> bytes);

/// The text with everything that could drive a terminal written as an escape: one line, and safe to print.
std::string printable(std::string_view utf8);

/// The printable text in double quotes, with its own quotes and backslashes escaped.
std::string inQuotes(std::string_view utf8);

/// Columns that a printable text takes up in a terminal.
std::size_t displayWidth(std::string_view utf8);

/// The text, followed by spaces up to a width.
std::string padded(std::string text, std::size_t width);

/// Printable lines, each behind so many spaces.
std::string indented(std::string_view lines, std::size_t indent);

/// "yes" or "no".
std::string yesOrNo(bool answer);

/// "1 policy", "2 policies".
std::string countOfPolicies(std::size_t count);

}  // namespace tool
