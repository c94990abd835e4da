// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "documents/findings/finding.h"

namespace tool {

/// How many there are of each severity.
struct FindingCount {
  std::size_t errors = 0;
  std::size_t warnings = 0;
};
FindingCount countFindings(const documents::Findings& findings);

/// "1 error, 2 warnings", "no findings".
std::string describe(const FindingCount& count);

/// What was checked, for places to be shown in.
struct FindingSource {
  std::string name;
  /// the text that the findings' places are in
  std::string_view text;
  /// false for a binary: it has no lines, and a place is a path or nothing
  bool hasLines = true;
};

/// True when a finding has a place in the text. Findings about policies that a text holds, but not in words, have only
/// a path.
bool hasPlace(const FindingSource& source, const documents::Finding& finding);

/// The findings as a compiler prints them: place, code and sentence on a line, the line of the text with the stretch
/// marked, and what would help.
std::string renderFindings(const FindingSource& source, const documents::Findings& findings);

}  // namespace tool
