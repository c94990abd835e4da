// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

#include "documents/findings/finding.h"

namespace tool {

/// A file that was checked, and what there is to say about it.
struct SarifFile {
  /// as it was typed
  std::string path;
  /// what the findings' places are in
  std::string_view text;
  /// false for a binary: a finding's place in it is its path or nothing
  bool hasLines = true;
  const documents::Findings* findings = nullptr;
};

/// A log of SARIF 2.1.0, which code hosts and editors show: one run, with the rules that its results have.
nlohmann::ordered_json asSarif(const std::vector<SarifFile>& files);

}  // namespace tool
