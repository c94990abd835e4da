// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>

#include "tool/policies/finding_text.h"

namespace tool {

/// What every JSON document of the policy commands begins with, and counts up when its members change their meaning.
inline constexpr const char* kJsonSchema = "vqs/1";

/// The findings with their places, and the edits of their suggestions.
nlohmann::ordered_json findingsAsJson(const FindingSource& source, const documents::Findings& findings);

/// The findings as GitHub's workflow commands, one a line, which it shows beside the lines of a change.
std::string renderAnnotations(const FindingSource& source, const documents::Findings& findings);

}  // namespace tool
