// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <string_view>

#include "documents/policies/policy_set.h"
#include "tests/support/policy_model.h"

namespace documents {

/// A policy of the tests' model as a value, field by field.
Policy policyOf(const test::Policy& model);

/// What a .json of examples/policies says of the .bin beside it.
PolicySet sampleSet(std::string_view json);

/// A policy of any binary with nothing but an id and a name.
Policy namedPolicy(std::uint32_t id, std::u16string_view name);

}  // namespace documents
