// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "documents/policies/policy_set.h"

namespace documents {

/// One condition or action as a member of a document: `{ "Power Source": "DC Power" }`.
std::string documentEntry(const VqsPolicyCondition& condition);
std::string documentEntry(const VqsPolicyAction& action);

/// A condition in words: `Power Source is DC Power`, `Skin Temperature op 3: 4600 centi-C`.
std::string inWords(const VqsPolicyCondition& condition);
/// An action in words: `SPL 15000 mW`, `Fan Table Index 3 (option1 1)`.
std::string inWords(const VqsPolicyAction& action);

/// UTF-8 to read of a name or text, of a description: surrogates without a partner and bytes that are no UTF-8 become
/// U+FFFD. It may hold control characters: a terminal must not get it as it is.
std::string readable(const std::u16string& text);
std::string readable(std::string_view description);

}  // namespace documents
