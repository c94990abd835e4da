// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/tool/run_tool.h"

namespace test {

/// UTF-8 as Windows takes it.
std::wstring widen(const std::string& utf8);

/// A program that lies beside this one.
std::wstring besideTheTests(const std::wstring& name);

/// An argument as the C runtime reads it: backslashes count double in front of a quote.
std::wstring quoted(const std::wstring& argument);

/// Each in quotes after a space.
std::wstring argumentsOf(const std::vector<std::string>& arguments);

/// Waits for the end of a program, and closes its handles.
int exitCodeOf(const PROCESS_INFORMATION& started);

/// What a run of the tool that succeeds writes into a pipe.
std::string pipedOutput(const Tool& tool, const std::vector<std::string>& arguments);

}  // namespace test
