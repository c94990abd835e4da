// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "documents/schema/definitions.h"
#include "documents/vocabulary/vocabulary.h"

// Schemas of conditions and actions: objects of one member, which is named after its type.

namespace documents {

JsonValue entrySchema(WordKind kind, Definitions& definitions);

}  // namespace documents
