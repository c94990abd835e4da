// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

namespace tool {

/// What the tool ends with. Scripts go by these numbers, which never change.
enum class ExitCode { kDone = 0, kNo = 1, kCouldNotRun = 2, kNoDriver = 3, kTimedOut = 4 };

struct ExitCodeRow {
  ExitCode code;
  /// as the help has it
  const char* meaning;
};

inline constexpr std::array<ExitCodeRow, 5> kExitCodes = {{
    {.code = ExitCode::kDone, .meaning = "done, the same, met"},
    {.code = ExitCode::kNo, .meaning = "the answer is no: there are findings, or differences"},
    {.code = ExitCode::kCouldNotRun, .meaning = "the command line is wrong, or the command could not be carried out"},
    {.code = ExitCode::kNoDriver, .meaning = "there is no driver, or none that can be used"},
    {.code = ExitCode::kTimedOut, .meaning = "it took too long"},
}};

}  // namespace tool
