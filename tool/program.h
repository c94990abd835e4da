// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include "tool/context.h"

namespace tool {

/// Adds every command and every option to the program.
void buildProgram(CLI::App& program, Context& context);

/// What is wrong with a command line that was not understood, and where help is.
std::string describeUsage(const CLI::App& program, const CLI::ParseError& error);

}  // namespace tool
