// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace documents {

/// The JSON Schema (draft-07) of documents, made from the vocabulary.
std::string makeSchema();

}  // namespace documents
