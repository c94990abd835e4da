// SPDX-License-Identifier: Apache-2.0
#include "output.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>

#include "errors.h"
#include "text.h"

namespace tool {

void writeOutput(std::string_view text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!written) throw Failure{fmt::format("standard output cannot be written: {}", systemMessage(errno))};
}

void writeError(std::string_view message) {
  const std::string line = "vqs: " + printable(message) + '\n';
  // There is nowhere left to report a failure to.
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

}  // namespace tool
