// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "documents/bind/context.h"

namespace documents {

/// The two numbers of "version".
void bindVersion(Context& context, NodeId id, const Path& path, PolicySet& set);

}  // namespace documents
