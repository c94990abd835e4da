// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "documents/bind/context.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {

/// The value of a condition or an action, in any of its forms. `word` is null for one that no catalogue knows, which
/// takes any number. Nothing comes back when no number is meant; one that the catalogue does not admit does.
std::optional<std::uint32_t> bindValue(Context& context, NodeId id, const Path& path, const Word* word);

/// Says what the catalogue has against a number.
void checkValue(Context& context, Span span, const Path& path, const Word& word, std::int64_t value);

}  // namespace documents
