// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/schema/definitions.h"
#include "documents/vocabulary/vocabulary.h"

// Schemas of what stands for a word's value.

namespace documents {

JsonValue numberSchema(std::int64_t least, std::int64_t most);
JsonValue alternatives(std::vector<JsonValue> schemas);
JsonValue described(JsonValue schema, std::string_view description);

/// "0-100" of a word without options, otherwise its name as a name of definitions has it: "power-source".
std::string valueName(const Word& word);

/// A reference to the schema of every form of a word's value but that of an object.
JsonValue valueSchema(const Word& word, Definitions& definitions);

/// What a word is, for whoever writes it: "Condition 10: 0 to 4294967295 %. Comparison 0, 1, 2, 3 or 4."
std::string describe(const Word& word);

}  // namespace documents
