// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace setup {

/// The command line by which a program gets exactly these arguments, whatever is in them.
std::wstring commandLine(const std::filesystem::path& program, const std::vector<std::wstring>& arguments);

/// Runs a program, whose output is this program's, and waits for its end. Throws a Failure unless it ends with 0.
void run(const std::filesystem::path& program, const std::vector<std::wstring>& arguments);

}  // namespace setup
