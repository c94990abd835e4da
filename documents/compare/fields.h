// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "documents/compare/difference.h"

namespace documents {

/// What differs between two policies, their ids left out, in the order of a document's members.
std::vector<FieldDifference> differencesOf(const Policy& first, const Policy& second);

}  // namespace documents
