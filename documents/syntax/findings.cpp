// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <utility>

#include "documents/findings/finding.h"
#include "documents/syntax/tree.h"

namespace documents {
namespace {

/// Behind all others when they are sorted by their places.
Finding tooMany(const Findings& findings, const Finding& dropped) {
  std::size_t last = dropped.span.offset;
  for (const Finding& finding : findings) last = std::max(last, finding.span.offset);
  return {.rule = Rule::kTooManyFindings,
          .severity = Severity::kError,
          .span = {.offset = last, .length = 0},
          .path = {},
          .sentence = "there is more to say than " + std::to_string(kMostFindings - 1) +
                      " findings: mend some of them and check again",
          .suggestions = {}};
}

}  // namespace

void addFinding(Findings& findings, Finding finding) {
  if (isFull(findings)) return;
  if (findings.size() + 1 == kMostFindings) finding = tooMany(findings, finding);
  findings.push_back(std::move(finding));
}

bool isFull(const Findings& findings) { return findings.size() >= kMostFindings; }

bool hasErrors(const Findings& findings) {
  return std::ranges::any_of(findings, [](const Finding& finding) { return finding.severity == Severity::kError; });
}

}  // namespace documents
