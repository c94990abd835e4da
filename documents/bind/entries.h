// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "documents/bind/bound.h"
#include "documents/bind/context.h"

namespace documents {

/// The elements of "when" and of "do".
void bindConditions(Context& context, NodeId list, const Path& path, BoundPolicy& policy);
void bindActions(Context& context, NodeId list, const Path& path, BoundPolicy& policy);

}  // namespace documents
