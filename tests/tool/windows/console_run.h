// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tests/tool/run_tool.h"

namespace test {

/// What a console can be set to that every program in it shares.
struct ConsoleState {
  unsigned codePage;
  unsigned mode;
  bool operator==(const ConsoleState&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const ConsoleState& state);

/// What a run of the tool in a console of its own left behind.
struct ConsoleRun {
  int exitCode;
  ConsoleState before;
  /// of a run that was interrupted: the mode that it had set by then
  unsigned modeDuring;
  ConsoleState after;
  std::string screen;
};

/// Runs the tool in a console without a window.
ConsoleRun runInConsole(const Tool& tool, const std::vector<std::string>& arguments);

/// Types Ctrl-C there once the tool has changed the console's mode.
ConsoleRun interruptInConsole(const Tool& tool, const std::vector<std::string>& arguments);

}  // namespace test
