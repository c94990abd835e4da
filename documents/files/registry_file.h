// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "documents/findings/finding.h"

namespace documents {

/// The policy binary in registry text.
struct RegistryFile {
  std::vector<std::byte> binary;
  /// all of its value, in bytes from the text's start
  Span span;
};

/// The binary that registry text holds; nothing, and a finding, when there is none. Where several values hold one, it
/// is the first one with a name, and a warning says which are left out.
std::optional<RegistryFile> readRegistryText(std::string_view text, Findings& findings);

/// The text in UTF-8 when it is UTF-16 that begins like registry text, of either byte order, with or without a byte
/// order mark.
std::optional<std::string> registryTextFromUtf16(std::span<const std::byte> bytes);

}  // namespace documents
