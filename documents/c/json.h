// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "documents/compare/difference.h"
#include "documents/findings/finding.h"

namespace documents {

/// Findings about a text as a JSON array, with their places in lines and columns.
std::string toJson(const Findings& findings, std::string_view text);

/// A difference as a JSON object.
std::string toJson(const Difference& difference);

}  // namespace documents
