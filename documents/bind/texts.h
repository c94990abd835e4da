// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "documents/bind/bound.h"
#include "documents/bind/context.h"

namespace documents {

/// What a record holds of a text: units of UTF-16, bytes in the layouts of 8-bit text.
struct TextLimit {
  Rule rule;
  std::size_t units;
  std::size_t bytes;
};

/// The units of a name or a text.
std::u16string bindText(Context& context, NodeId id, const Path& path, const TextLimit& limit);

/// The elements of "texts".
void bindTexts(Context& context, NodeId list, const Path& path, BoundPolicy& policy);

/// The bytes of a description, cut to what a record holds.
std::string bindDescription(Context& context, NodeId id, const Path& path);

}  // namespace documents
