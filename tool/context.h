// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "tool/terminal/output.h"

namespace tool {

/// What a command gets beside its own arguments.
struct Context {
  /// where text goes, and what goes there once the command has succeeded
  Output output;
  std::string out;
  /// --simulated
  bool isDriverSimulated = false;
  /// --driver-state
  std::optional<std::string> driverState;
};

}  // namespace tool
