// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string_view>

#include "tool/context.h"

namespace tool {

inline constexpr const char* kVersionOption = "--version";
inline constexpr const char* kVersionText = "vqs " VQS_TOOL_VERSION;

/// Says whether a program is to have the commands of a name.
using Selection = std::function<bool(std::string_view name)>;

/// Adds every option, and every command that is wanted.
void buildProgram(CLI::App& program, Context& context, const Selection& isWanted);

/// What is wrong with a command line that was not understood, and where help is.
std::string describeUsage(const CLI::App& program, const CLI::ParseError& error);

}  // namespace tool
