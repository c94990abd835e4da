// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "documents/schema/json_value.h"

namespace documents {

/// The schemas that others refer to, each once: words of the same values share one.
class Definitions {
 public:
  /// A reference to a schema, which gets the name unless an equal one has another already.
  JsonValue refer(std::string_view name, JsonValue schema);

  JsonValue take() { return JsonValue::object(std::move(schemas_)); }

 private:
  std::vector<JsonMember> schemas_;
};

}  // namespace documents
