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

/// What a schema is called that words of the same values and units share.
std::string entryName(const Word& word);

/// A reference to the schema of every form of a word's value but that of an object.
JsonValue valueSchema(const Word& word, Definitions& definitions);

/// The kinds of JSON that its value may have but that of an object, the usual one first: editors begin it.
JsonValue typesOf(const Word& word);

/// "0 to 100 %"
std::string describeValue(const Word& word);

/// What a word is, for whoever writes it: "Condition 10: 0 to 4294967295 %. Comparison 0, 1, 2, 3 or 4."
std::string describe(const Word& word);

}  // namespace documents
