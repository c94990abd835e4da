// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "tool/exit_code.h"
#include "tool/terminal/output.h"

namespace tool {

/// What a command gets beside its own arguments.
struct Context {
  /// where text goes, and what goes there once the command has succeeded
  Output output;
  std::string out;
  /// the command's answer, when it has been carried out
  ExitCode exitCode = ExitCode::kDone;
  /// --simulated
  bool isDriverSimulated = false;
  /// --driver-state
  std::optional<std::string> driverState;
};

}  // namespace tool
