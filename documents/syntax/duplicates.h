// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "documents/syntax/tree.h"

namespace documents {

/// A member whose name an earlier member of the object has, and the first that has it.
struct Duplicate {
  NodeId first;
  NodeId again;
};

/// All of an object's. The time grows with n log n, whatever the names are.
std::vector<Duplicate> duplicatesOf(const Tree& tree, NodeId object);

}  // namespace documents
