// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace documents {

/// What another reader of JSON, which takes comments too, says of a text. Empty when both agree: on the value, or on
/// there being none. Where a document may differ from JSON on purpose, in trailing commas, surrogates without a
/// partner, numbers beyond a double's, members that come twice, and our limits, it is no difference.
std::string differenceToOracle(std::string_view text);

/// True when both read the text as a value, the same one.
bool agreesOnValue(std::string_view text);

}  // namespace documents
