// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tool/system/process.h"
#include "tool/terminal/output.h"

namespace tool {

/// A value under its name; none when there is nothing to show.
struct ShownValue {
  std::string name;
  std::optional<std::string> value;
};

/// Values that change: in place where the output is a terminal, otherwise a line for each time they are shown.
class LiveOutput {
 public:
  explicit LiveOutput(Output& output);

  /// Throws a Failure when the values cannot be written.
  void show(const std::vector<ShownValue>& values);
  /// Leaves the line to whoever comes next, when Ctrl-C has put its mark there.
  void leave();

 private:
  Output& output_;
  std::optional<platform::Terminal> terminal_;
  /// Lines that stand there.
  std::size_t lines_ = 0;
};

}  // namespace tool
