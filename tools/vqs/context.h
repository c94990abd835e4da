// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace tool {

/// What a command gets beside its own arguments.
struct Context {
  /// what goes to standard output once the command has succeeded
  std::string out;
  /// --driver-state
  std::optional<std::string> driverState;
};

}  // namespace tool
