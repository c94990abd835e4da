// SPDX-License-Identifier: Apache-2.0
#include "tool/policies/correction.h"

#include <algorithm>
#include <utility>

namespace tool {

bool hasCertainCorrection(const documents::Findings& findings) {
  return std::ranges::any_of(findings, [](const documents::Finding& finding) {
    return std::ranges::any_of(finding.suggestions, &documents::Suggestion::isCertain);
  });
}

std::string correctedText(std::string text, documents::Findings findings, const documents::ReadOptions& options) {
  // A correction can lead to the next one: a name that is right now shows what is wrong with its value.
  constexpr int kMostPasses = 10;
  for (int pass = 0; pass < kMostPasses && hasCertainCorrection(findings); ++pass) {
    auto next = documents::applyCertainFixes(text, findings);
    if (next == text) break;
    text = std::move(next);
    findings = documents::readDocument(text, options).findings;
  }
  return text;
}

}  // namespace tool
