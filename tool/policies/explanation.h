// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace tool {

/// All that there is to say about a condition, an action, an option or a finding's code; about each of them where they
/// share a name. Case does not matter, and "#12" is the condition and the action of that number. Throws a Failure that
/// suggests the nearest name when nothing is called so.
std::string explain(const std::string& name);

}  // namespace tool
