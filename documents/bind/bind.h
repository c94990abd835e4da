// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "documents/documents.h"
#include "documents/syntax/tree.h"

namespace documents {

/// Makes policies of a tree. Every finding is added, whatever went before; nothing comes back when no record can hold
/// what the document says.
std::optional<PolicySet> bind(const Tree& tree, const ReadOptions& options, Findings& findings);

}  // namespace documents
