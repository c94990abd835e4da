// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "documents/bind/context.h"
#include "documents/vocabulary/vocabulary.h"

namespace documents {

/// A condition or an action by its name, with the value that it has in the document.
struct Entry {
  std::uint32_t id;
  /// null where no catalogue knows the number
  const Word* word;
  NodeId value;
};

/// What an element of "when" or "do" names: one entry, if it is as it should be; several, where somebody wrote them
/// into one object; none, where no name is known.
std::vector<Entry> bindEntries(Context& context, NodeId element, const Path& path, WordKind kind);

/// "condition"
std::string_view nameOf(WordKind kind);

}  // namespace documents
