// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "documents/documents.h"

namespace tool {

/// True when a finding has a correction that is certain.
bool hasCertainCorrection(const documents::Findings& findings);

/// A document, of which these are the findings, with all corrections that are certain.
std::string correctedText(std::string text, documents::Findings findings, const documents::ReadOptions& options);

}  // namespace tool
