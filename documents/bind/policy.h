// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "documents/bind/bound.h"
#include "documents/bind/context.h"

namespace documents {

/// An element of "policies".
BoundPolicy bindPolicy(Context& context, NodeId id, const Path& path);

}  // namespace documents
