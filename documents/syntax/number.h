// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "documents/findings/finding.h"

namespace documents {

/// True for what begins as numbers do, in JSON or elsewhere.
bool looksLikeNumber(std::string_view word);

/// True for a number of JSON.
bool isNumber(std::string_view word);

/// What is wrong with a word that looks like a number and is none: the sentence, and how to write it.
Finding malformedNumber(std::string_view word, Span span);

}  // namespace documents
