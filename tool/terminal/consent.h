// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "tool/terminal/output.h"

namespace tool {

/// True when there is somebody to ask, who sees what is put out: standard input and standard output are a terminal.
bool canAsk(const Output& output);

/// Asks a question that the answer "y" or "yes" consents to, and anything else does not.
bool ask(Output& output, const std::string& question);

}  // namespace tool
