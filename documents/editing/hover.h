// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "documents/editing/explanation.h"
#include "documents/findings/finding.h"

namespace documents {

/// What there is to be said about a place: about what stands there, and about each finding whose place it is.
struct Hover {
  Span span;
  std::vector<Explanation> explanations;
};

/// Nothing where there is nothing to be said.
std::optional<Hover> hoverAt(std::string_view text, std::size_t offset, const Findings& findings);

}  // namespace documents
