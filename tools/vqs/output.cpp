// SPDX-License-Identifier: Apache-2.0
#include "output.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>

#include "errors.h"
#include "platform.h"
#include "text.h"

namespace tool {

void writeOutput(std::string_view text) {
  if (!platform::writeText(stdout, text))
    throw Failure{fmt::format("standard output cannot be written: {}", systemMessage(errno))};
}

void writeError(std::string_view message) {
  // There is nowhere left to report a failure to.
  static_cast<void>(platform::writeText(stderr, "vqs: " + printable(message) + '\n'));
}

}  // namespace tool
