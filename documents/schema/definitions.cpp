// SPDX-License-Identifier: Apache-2.0
#include "documents/schema/definitions.h"

#include <algorithm>
#include <string>

namespace documents {

JsonValue Definitions::refer(std::string_view name, JsonValue schema) {
  auto known = std::ranges::find(schemas_, schema, &JsonMember::value);
  if (known == schemas_.end()) known = schemas_.insert(known, {std::string(name), std::move(schema)});
  return JsonValue::object({{"$ref", JsonValue::text("#/definitions/" + known->name)}});
}

}  // namespace documents
